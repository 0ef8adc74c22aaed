#ifndef ZELUTIL_COMMAND_SPELLING_ADVICE_H
#define ZELUTIL_COMMAND_SPELLING_ADVICE_H

namespace zelutil::command {

/// Says what to do about a path that the library cannot spell.
inline constexpr char kOnlySpellable[] = "Use a path without any of the characters * ? \" < > |.";

}  // namespace zelutil::command

#endif
