// zelutil bundle: a directory that --world takes in the place of this machine.
#include <filesystem>
#include <fstream>
#include <memory>
#include <system_error>

#include "command/arguments.h"
#include "command/command_line_text.h"
#include "command/doctor/report.h"
#include "command/subcommands/table.h"
#include "command/text.h"
#include "command/world/bundle.h"
#include "command/world/identity.h"

namespace zelutil::command {
namespace {

namespace fs = std::filesystem;
using world::Bundle;
using world::BundledFile;

struct BundleChoices {
    std::string directory;
    bool redact = false;
};

constexpr char kReadme[] =
    "This directory was made by \"zelutil bundle\". It stands for the machine that it was made on:\n"
    "\"zelutil SUBCOMMAND --world DIR\" says what SUBCOMMAND says there, with the paths of that machine.\n"
    "\n"
    "    world.json    variables, current directory, symbolic links, and the common library\n"
    "    files/        the preference and facet files; other files are empty and only there\n"
    "    doctor.txt    what \"zelutil doctor\" says\n"
    "    doctor.json   the same for programs\n";

/// Returns the redaction of what tells who the user of the machine in force is.
world::Redaction redactionOfUser() {
    const world::Identity identity = world::identityInForce();
    return {identity.words, identity.homes};
}

void writeInto(const fs::path& file, const std::string& text) {
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    stream.close();
    if (!stream) {
        throw fs::filesystem_error("A file could not be written", file, std::make_error_code(std::errc::io_error));
    }
}

std::string doctorsText(const Diagnosis& diagnosis, bool json) {
    Output output("doctor", FindingsAre::TheResult, {json, ColorChoice::Never});
    tell(diagnosis, output);
    return output.text();
}

/// Makes the directory, which others may not look into.
bool prepare(const fs::path& directory, Output& output) {
    std::error_code error;
    if (fs::exists(directory, error) && (!fs::is_directory(directory, error) || !fs::is_empty(directory, error))) {
        output.fail("\"" + textOf(directory) + "\" is there already and is not an empty directory.",
                    "Name a directory that is not there yet.");
        return false;
    }
    fs::create_directories(directory, error);
    if (!error) {
        fs::permissions(directory, fs::perms::owner_all, error);
    }
    if (error) {
        output.fail("The directory \"" + textOf(directory) + "\" cannot be made: " + error.message() + '.',
                    "Name a directory that you may make.");
    }
    return !error;
}

void tellBundle(const Bundle& bundle, const fs::path& directory, bool redacted, Output& output) {
    for (const BundledFile& file : bundle.files) {
        output.line("{} ({})", output.shown(Role::Name, file.path), world::nameOf(file.kind));
    }
    output.line("The bundle is in {}. Ask it so: zelutil doctor --world {}",
                output.shown(Role::Value, textOf(directory)),
                output.shown(Role::Value, quotedForShell(textOf(directory))));
    output.members([&](JsonWriter& json) {
        json.member("directory", textOf(directory));
        json.member("redacted", redacted);
        json.objects("files", bundle.files, [&](const BundledFile& file) {
            json.member("file", file.path);
            json.member("content", world::nameOf(file.kind));
        });
        json.list("variables", bundle.variables, [&](const std::string& name) { json.text(name); });
    });
    for (const Finding& finding : bundle.findings) {
        output.add(finding);
    }
}

void runBundle(const BundleChoices& choices, Output& output) {
    const fs::path directory = pathOf(choices.directory);
    if (!prepare(directory, output)) {
        return;
    }
    const world::Redaction redaction = choices.redact ? redactionOfUser() : world::Redaction();
    try {
        const Bundle made = world::makeBundle(directory, redaction);
        writeInto(directory / "doctor.json", doctorsText(made.diagnosis, true));
        writeInto(directory / "doctor.txt", doctorsText(made.diagnosis, false));
        writeInto(directory / "README.txt", kReadme);
        tellBundle(made, directory, choices.redact, output);
    } catch (const fs::filesystem_error& error) {
        output.fail(std::string("The bundle could not be made: ") + error.what(),
                    "Remove what is in \"" + textOf(directory) + "\", or make the bundle elsewhere.");
    }
}

Work declareBundle(CLI::App& arguments) {
    const auto choices = std::make_shared<BundleChoices>();
    addName(arguments, "DIR", choices->directory, "The directory to make")->required();
    arguments.add_flag("--redact", choices->redact, "Take out the user's and the machine's name and the user's values");
    return [choices](Output& output) { runBundle(*choices, output); };
}

}  // namespace

const Subcommand kBundle{"bundle", "Make a directory that stands for this machine, for --world",
                         "$ zelutil bundle for-support --redact\n"
                         "/opt/product/share/qtxsetup/canvas/resources/tessel/tessel_settings.cfg (copied)\n"
                         "...",
                         FindingsAre::BesideResult, declareBundle};

}  // namespace zelutil::command
