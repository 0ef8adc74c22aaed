#ifndef ZELUTIL_PREFS_ENTRY_FINDING_H
#define ZELUTIL_PREFS_ENTRY_FINDING_H

#include <string>

namespace zelutil::prefs {

/// An entry of the user's file that did not do what its place and name say.
struct EntryFinding {
    enum class Kind {
        UnknownSection,  ///< The defaults have no such section, so that all its entries had no effect.
        UnknownName,     ///< No setting has the name.
        NoText,          ///< The value is no string, or what stands there is no entry at all.
        NoList,          ///< The entries of the section do not stand in an array, so that all had no effect.
        NotOfTheForm,    ///< It does not stand in the form that is read.
        AnotherSection,  ///< It has set a setting of another section, which its name means first.
    };

    Kind kind = Kind::UnknownName;
    std::string section;  ///< The attribute path where it stands.
    std::string name;     ///< The name as it is written; empty where the section as a whole is meant.
};

}  // namespace zelutil::prefs

#endif
