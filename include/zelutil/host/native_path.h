#ifndef ZELUTIL_HOST_NATIVE_PATH_H
#define ZELUTIL_HOST_NATIVE_PATH_H

#include <zelutil/export.h>
#include <zelutil/file/path.h>

#include <string>
#include <type_traits>
#include <utility>

/// Paths of this library and paths of the system, so that a host needs no case for either system.
namespace zelutil::host {

/// A path as the system names it: characters of UTF-16 on Windows, bytes elsewhere. It converts from and to
/// std::filesystem::path:
///
///     const std::filesystem::path file = zelutil::host::nativePath(path);
///
/// The header `<filesystem>` is left to the sources that use it, since it doubles what this one costs the compiler.
class NativePath {
public:
    /// A character of the system's.
    using value_type = ZELUTIL_NATIVE_CHARACTER;
    /// Such characters, as std::filesystem::path has them.
    using string_type = std::basic_string<value_type>;

    /// Makes an empty one.
    NativePath() noexcept = default;
    /// Takes the characters as they stand.
    NativePath(string_type text) noexcept : text_(std::move(text)) {}
    /// Takes characters of the narrow encoding, as std::filesystem::path does: on Windows that of the system. Throws
    /// std::system_error where they are none of it. Ends at the first null character.
    ZELUTIL_API NativePath(const char* text);
    /// Takes wide characters as they stand, where the system has such. Ends at the first null character.
    template <typename Character,
              typename = std::enable_if_t<std::is_same_v<Character, value_type> && !std::is_same_v<Character, char>>>
    NativePath(const Character* text) : text_(text) {}
    /// Takes the characters of a std::filesystem::path as they stand.
    template <typename Path, typename = std::enable_if_t<std::is_same_v<typename Path::string_type, string_type>>,
              typename = decltype(std::declval<const Path&>().native())>
    NativePath(const Path& path) : text_(path.native()) {}

    /// Returns the characters.
    const string_type& native() const noexcept { return text_; }
    /// Returns the characters, with a null character behind the last.
    const value_type* c_str() const noexcept { return text_.c_str(); }
    /// Returns whether there are none.
    bool empty() const noexcept { return text_.empty(); }

    /// Makes a std::filesystem::path.
    template <typename Path, typename = std::enable_if_t<std::is_same_v<typename Path::string_type, string_type>>>
    operator Path() const {
        return Path(text_);
    }

private:
    string_type text_;
};

/// Compares the characters. As templates these are for two paths of this type alone: one of them and a
/// std::filesystem::path are compared as the latter does.
template <typename A, typename B>
std::enable_if_t<std::is_same_v<A, NativePath> && std::is_same_v<B, NativePath>, bool> operator==(const A& a,
                                                                                                  const B& b) {
    return a.native() == b.native();
}
/// Compares them the other way round.
template <typename A, typename B>
std::enable_if_t<std::is_same_v<A, NativePath> && std::is_same_v<B, NativePath>, bool> operator!=(const A& a,
                                                                                                  const B& b) {
    return !(a == b);
}

/// Returns the path as the system names it: on Windows as it stands, elsewhere `Z:\home\ann` as /home/ann. It is the
/// file that this library opens for that path. Empty for the empty path and for one that names no file there.
ZELUTIL_API NativePath nativePath(const ZelU::File::Path& path);

/// The same for a text such as `SaveResult::path`, which is taken as it stands.
ZELUTIL_API NativePath nativePath(const std::string& text);

/// Returns the library's path of a file, made absolute, without "." and ".." components, which go with the component
/// before them, and without a separator at the end. Empty where no path names that very file: for a character that the
/// narrow encoding or the rules of `ZelU::File::Path` lack.
ZELUTIL_API ZelU::File::Path fromNative(const NativePath& path);

}  // namespace zelutil::host

#endif
