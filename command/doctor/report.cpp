#include "command/doctor/report.h"

#include "command/doctor/candidate_text.h"
#include "command/text.h"

namespace zelutil::command {
namespace {

void print(const SearchStep& step, Output& output) {
    const std::string result = step.result.empty() ? "none" : '"' + nativeOrAsItStands(step.result) + '"';
    output.line("{}: {}", output.shown(Role::Name, step.title), output.shown(Role::Value, result));
    for (const text::Candidate& candidate : step.candidates) {
        const bool taken = candidate.verdict == text::Candidate::Verdict::Taken;
        output.line("  {} {}", taken ? '+' : '-', output.shown(taken ? Role::Value : Role::Faint, lineOf(candidate)));
    }
    if (step.file) {
        output.line("    {}", printable(lineOf(*step.file)));
    }
}

void writeCandidate(JsonWriter& json, const text::Candidate& candidate) {
    json.member("source", nameOf(candidate.source));
    json.member("verdict", nameOf(candidate.verdict));
    json.member("variable", candidate.variable);
    json.member("seen", candidate.seen);
    json.member("found", candidate.found);
}

void writeFile(JsonWriter& json, const FileState& file) {
    json.key("file");
    json.beginObject();
    json.member("state", nameOf(file.kind));
    json.member("size", std::to_string(file.size));
    json.member("writeable", file.writeable);
    json.endObject();
}

void writeMembers(JsonWriter& json, const Diagnosis& diagnosis) {
    json.member("hasInstallation", diagnosis.hasInstallation);
    json.member("standIn", diagnosis.standIn);
    json.member("initialised", diagnosis.isReady);
    json.objects("steps", diagnosis.steps, [&](const SearchStep& step) {
        json.member("name", step.name);
        json.member("result", step.result);
        json.objects("candidates", step.candidates,
                     [&](const text::Candidate& candidate) { writeCandidate(json, candidate); });
        if (step.file) {
            writeFile(json, *step.file);
        }
    });
    // In the order of the findings.
    json.objects("symptoms", diagnosis.symptoms, [&](const Symptom& symptom) {
        json.member("kind", nameOf(symptom.kind));
        json.member("step", symptom.step);
        json.member("severity", nameOf(symptom.finding.severity));
    });
}

}  // namespace

void tell(const Diagnosis& diagnosis, Output& output) {
    for (const SearchStep& step : diagnosis.steps) {
        print(step, output);
    }
    output.members([&](JsonWriter& json) { writeMembers(json, diagnosis); });
    for (const Symptom& symptom : diagnosis.symptoms) {
        output.add(symptom.finding);
    }
}

}  // namespace zelutil::command
