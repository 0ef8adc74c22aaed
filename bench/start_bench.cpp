// Measures how a host starts: it reads both preference files and looks one setting up, each time in a new process. The
// peers are what a host would read the files with instead. The memory that is held then is measured, too. With --growth
// it prints how time and memory for each setting and for each action grow with their number, for tools/dev/growth.sh.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iomanip>
#include <iostream>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

#include "action_corpus.h"
#include "settings_corpus.h"
#include "support/table.h"

namespace {

using namespace zelutil::bench;

struct Side {
    const char* name;
    const char* program;
};

constexpr Side kSides[] = {{"zelutil", "zelutil_start"},
                           {"nlohmann::json, flattened", "nlohmann_start"},
                           {"RapidJSON in situ, flattened", "rapidjson_start"},
                           {"GKeyFile, flat INI", "glib_start"}};

/// As the programs of start/child.h print it.
struct Start {
    unsigned long long fromMain = 0;
    unsigned long long wholeProcess = 0;
    unsigned long long held = 0;
    unsigned long long touched = 0;
    unsigned long long length = 0;
};

struct Options {
    std::size_t repetitions = 15;
    std::regex filter{"."};
    std::string output;
    bool growth = false;
};

Options optionsOf(int argc, char** argv) {
    Options options;
    for (const std::string& argument : std::vector<std::string>(argv + 1, argv + argc)) {
        const std::string value = argument.substr(argument.find('=') + 1);
        if (argument.rfind("--benchmark_repetitions=", 0) == 0) {
            options.repetitions = std::stoul(value);
        } else if (argument.rfind("--benchmark_filter=", 0) == 0) {
            options.filter = std::regex(value);
        } else if (argument.rfind("--benchmark_out=", 0) == 0) {
            options.output = value;
        } else {
            options.growth = options.growth || argument == "--growth";
        }
    }
    return options;
}

[[noreturn]] void fail(const std::string& command) {
    std::cerr << "no start came of: " << command << '\n';
    std::exit(EXIT_FAILURE);
}

/// Runs a program beside this one.
Start run(const std::string& programAndArguments) {
    const std::string directory = std::filesystem::read_symlink("/proc/self/exe").parent_path().string();
    const std::string command = "exec " + directory + "/" + programAndArguments;
    FILE* const output = popen(command.c_str(), "r");
    Start start;
    const bool whole =
        output != nullptr && std::fscanf(output, "%llu %llu %llu %llu %llu", &start.fromMain, &start.wholeProcess,
                                         &start.held, &start.touched, &start.length) == 5;
    if (output == nullptr || pclose(output) != 0 || !whole) {
        fail(command);
    }
    return start;
}

void writeIni(const SettingsCorpus& corpus, const std::string& path) {
    std::ofstream file(path, std::ios::binary);
    file << "[settings]\n";
    for (const CorpusSetting& setting : corpus.settings()) {
        file << setting.fullName << '=' << setting.value() << '\n';
    }
}

/// The files of a corpus, where all programs find them.
class Files {
public:
    explicit Files(std::size_t count) : corpus_(count, 10, CorpusNames::Varied), directory_(corpus_) {
        writeIni(corpus_, directory_.path() + "/settings.ini");
    }

    const std::string& directory() const { return directory_.path(); }
    const CorpusSetting& last() const { return corpus_.settings().back(); }
    std::size_t size() const { return corpus_.defaultsText().size() + corpus_.userText().size(); }

    Start start(const Side& side) const {
        const Start start = run(std::string(side.program) + " '" + last().fullName + "'");
        if (start.length != last().value().size()) {
            fail(side.program);
        }
        return start;
    }

private:
    SettingsCorpus corpus_;
    PreferenceDirectory directory_;
};

double medianOf(std::vector<Start> starts, unsigned long long Start::*member) {
    std::vector<double> values;
    for (const Start& start : starts) {
        values.push_back(static_cast<double>(start.*member));
    }
    return median(values);
}

/// Each side's starts; the sides take turns.
std::vector<std::vector<Start>> startsOf(const Files& files, std::size_t repetitions) {
    std::vector<std::vector<Start>> starts(std::size(kSides));
    for (std::size_t repetition = 0; repetition < repetitions; ++repetition) {
        for (std::size_t side = 0; side < std::size(kSides); ++side) {
            starts[side].push_back(files.start(kSides[side]));
        }
    }
    return starts;
}

void printMemory(const Files& files, const std::vector<std::vector<Start>>& starts) {
    const auto shareOfFiles = [&](std::size_t side, unsigned long long Start::*member) {
        return medianOf(starts[side], member) / static_cast<double>(files.size());
    };
    std::cout << "memory by the size of both files (" << files.size() << " bytes): held, touched\n" << std::fixed;
    for (std::size_t side = 0; side < std::size(kSides); ++side) {
        std::cout << "  " << std::setprecision(2) << shareOfFiles(side, &Start::held) << "  "
                  << shareOfFiles(side, &Start::touched) << "  " << kSides[side].name << '\n';
    }
}

/// Adds one comparison to the samples of all.
void compare(std::size_t count, const Options& options, std::vector<Sample>& all) {
    const std::string name = "start with " + std::to_string(count) + " settings";
    if (!std::regex_search(name, options.filter)) {
        return;
    }
    const Files files(count);
    const auto starts = startsOf(files, options.repetitions);
    std::vector<Sample> samples;
    for (const auto& [part, member] :
         {std::pair(", from main on", &Start::fromMain), std::pair(", whole process", &Start::wholeProcess)}) {
        for (std::size_t side = 0; side < std::size(kSides); ++side) {
            for (const Start& start : starts[side]) {
                samples.push_back({name + part, kSides[side].name, static_cast<double>(start.*member), 0});
            }
        }
    }
    std::cout << comparisonTable(samples);
    printMemory(files, starts);
    all.insert(all.end(), samples.begin(), samples.end());
}

/// Writes what tools/dev/bench/record.py reads of the outputs of Google Benchmark.
void writeOutput(const std::vector<Sample>& samples, const std::string& path) {
    std::ofstream file(path);
    file << "{\"benchmarks\": [";
    const char* separator = "\n";
    for (const Sample& sample : samples) {
        file << separator << R"({"name": ")" << sample.comparison << '/' << sample.side
             << R"(", "run_type": "iteration", "family_index": 0, "cpu_time": )" << sample.nanosecondsPerCall << '}';
        separator = ",\n";
    }
    file << "\n]}\n";
}

/// Prints the medians for one number of items: the number, nanoseconds and bytes for each.
void printGrowth(const char* what, std::size_t count, const std::vector<Start>& starts) {
    const double items = static_cast<double>(count);
    std::cout << what << ' ' << count << ' ' << medianOf(starts, &Start::fromMain) / items << ' '
              << medianOf(starts, &Start::held) / items << '\n';
}

/// Takes the indentation out of a file: a text of a million settings is too large to be read with it.
void compact(const std::string& path) {
    std::string text;
    std::ifstream file(path, std::ios::binary);
    for (std::string line; std::getline(file, line);) {
        text += line.substr(std::min(line.find_first_not_of(' '), line.size()));
    }
    std::ofstream(path, std::ios::binary) << text;
}

void growSettings(std::size_t count, std::size_t repetitions) {
    const Files files(count);
    compact(files.directory() + "/defaults.cfg");
    compact(files.directory() + "/pcbenv/tessel/tessel_settings.cfg");
    std::vector<Start> starts;
    for (std::size_t repetition = 0; repetition < repetitions; ++repetition) {
        starts.push_back(files.start(kSides[0]));
    }
    printGrowth("settings", count, starts);
}

void growActions(std::size_t count, std::size_t repetitions) {
    constexpr std::size_t kPerContext = 500;
    const RunDirectory directory;
    const std::string file = directory.write("actions.json", actionText(makeActions(count / kPerContext, kPerContext)));
    std::vector<Start> starts;
    for (std::size_t repetition = 0; repetition < repetitions; ++repetition) {
        starts.push_back(run("zelutil_actions_start " + std::to_string(count) + " '" + file + "'"));
    }
    printGrowth("actions", count, starts);
}

void printGrowth(std::size_t repetitions) {
    for (const std::size_t count : {1000U, 3000U, 10'000U, 30'000U, 100'000U, 300'000U, 1'000'000U}) {
        growSettings(count, repetitions);
    }
    for (const std::size_t count : {1000U, 3000U, 10'000U, 30'000U, 100'000U}) {
        growActions(count, repetitions);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const Options options = optionsOf(argc, argv);
    if (options.growth) {
        printGrowth(options.repetitions);
        return EXIT_SUCCESS;
    }
    std::vector<Sample> samples;
    for (const std::size_t count : {100U, 10'000U}) {
        compare(count, options, samples);
    }
    if (!options.output.empty()) {
        writeOutput(samples, options.output);
    }
}
