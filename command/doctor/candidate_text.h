#ifndef ZELUTIL_COMMAND_DOCTOR_CANDIDATE_TEXT_H
#define ZELUTIL_COMMAND_DOCTOR_CANDIDATE_TEXT_H

#include <string>

#include "command/doctor/diagnosis.h"

/// The words for what the searches looked at.
namespace zelutil::command {

/// Returns the system's own path for one of the library, without the quotes that a blank puts it into; as it stands
/// where it names no file.
std::string nativeOrAsItStands(std::string path);

/// Returns a line for people: where the candidate comes from, its path, and why it was taken or refused.
std::string lineOf(const text::Candidate& candidate);

/// Returns a line for people.
std::string lineOf(const FileState& file);

// Names in the form for programs.
const char* nameOf(text::Candidate::Source source);
const char* nameOf(text::Candidate::Verdict verdict);
const char* nameOf(FileState::Kind kind);

}  // namespace zelutil::command

#endif
