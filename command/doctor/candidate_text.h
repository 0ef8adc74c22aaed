#ifndef ZELUTIL_COMMAND_DOCTOR_CANDIDATE_TEXT_H
#define ZELUTIL_COMMAND_DOCTOR_CANDIDATE_TEXT_H

#include <string>

#include "command/doctor/diagnosis.h"

/// The words for what the searches looked at.
namespace zelutil::command {

/// Returns whether the variable holds something that cannot be a path. The current directory then stands for it.
bool holdsNoPath(const std::string& variable);

/// Returns a line for people: where the candidate comes from, its path, and why it was taken or refused.
std::string lineOf(const text::Candidate& candidate);

/// Returns a line for people.
std::string lineOf(const FileState& file);

/// Returns in words that a name in the file's path, or the path itself, is too long.
std::string wordsOnLength(const FileState& file);

// Names in the form for programs.
const char* nameOf(text::Candidate::Source source);
const char* nameOf(text::Candidate::Verdict verdict);
const char* nameOf(FileState::Kind kind);

}  // namespace zelutil::command

#endif
