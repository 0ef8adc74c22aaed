#ifndef ZELUTIL_FILE_PATH_H
#define ZELUTIL_FILE_PATH_H

#include <zelutil/export.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace ZelU {
namespace File {

/// A file-system path. Every text that enters is brought at once into one canonical form, so that paths compare, join
/// and split as plain texts: backslashes, none doubled but a network path's leading pair, none at the end, no "." or
/// ".." component, absolute. The empty path is "no path", and what every rejected text becomes: nothing here throws
/// for a bad path.
///
///     c:/a//b/               => c:\a\b
///     //server/share/x       => \\server\share\x
///     c:/a/./b/../c          => c:\a\c
///     "c:/my files"          => c:\my files       double quotes are dropped
///     notes.txt              => C:\work\notes.txt the current directory (here C:\work) goes in front
///     c:/a*b, c:/a?b, c:/a|b => the empty path    so do < > and line breaks
///     c:/a/../..             => the empty path    climbs above the drive
///     notes.txt              => the empty path    where the current directory is gone or no text names it
///
/// Odd texts that hosts may meet:
///
///     c:/a///b               => c:\a\/b           the third separator of a run is left as it is
///     c:/""a                 => c:\"a             so is the second quote of a pair
///     /a                     => C:\work\\a        a single leading separator is relative
///
/// Texts are bytes of the narrow (ANSI) encoding and case matters, though the file system may fold it. On systems
/// without drives "Z:" is the root directory: /home/ann reads `Z:\home\ann`. A `Path` is a value and may be copied and
/// moved freely; a moved-from one is as by default. One object must not be changed while another thread uses it; making
/// and changing several on several threads is fine. Where memory runs out, an operation throws `std::bad_alloc` and
/// leaves its object as it was.
class ZELUTIL_API Path {
public:
    /// The empty path.
    Path() = default;

    /// `dir`, and below it `name` unless that is null. Empty when `dir` is null or empty, whatever `name` is.
    ///
    ///     "c:/a", "b/c" => c:\a\b\c        "c:/a", null => c:\a        "", "b" => the empty path
    Path(const char* dir, const char* name);

    /// The path of `text`.
    Path(const std::string& text);

    /// The same; null gives the empty path. Explicit, so that a C string is no second way to a `Path` where texts and
    /// paths meet.
    explicit Path(const char* text);

    Path(const Path& other) = default;
    /// Moves the text; the other is as by default afterwards.
    Path(Path&& other) noexcept;
    Path& operator=(const Path& other) = default;
    /// Moves the text; the other is as by default afterwards.
    Path& operator=(Path&& other) noexcept;
    ~Path() = default;

    /// Takes a new text; null and "" give the empty path.
    ///
    /// A path that once had the current directory put in front remembers it: a relative text assigned to it later stays
    /// relative. Assigning null or "" first makes it forget, as does assigning another `Path`.
    Path& operator=(const char* text);

    /// Appends a component, or several. Null changes nothing; "" adds nothing. Only what is appended is normalised, so
    /// it may climb out of this path ("..") but is never taken for an absolute text.
    ///
    ///     c:\a += "b/c" => c:\a\b\c        c:\a += "../b" => c:\b        c:\a += "d:/b" => c:\a\d:\b
    ///     c:\a += "b?"  => the empty path
    ///     the empty path += "b" => C:\work\\b, as the text /b
    Path& operator+=(const char* component);
    /// The same for a text.
    Path& operator+=(const std::string& component);

    /// A copy with the component appended, as by `+=`.
    Path operator+(const char* component) const;
    /// The same for a text.
    Path operator+(const std::string& component) const;

    /// Compares byte by byte; `c:\A` and `c:\a` differ.
    bool operator==(const Path& other) const;
    /// Returns the contrary.
    bool operator!=(const Path& other) const;
    /// By unsigned bytes; of two texts of which one begins the other the shorter is less.
    bool operator<(const Path& other) const;

    /// These would compare addresses. Compare with a `Path`, or the text with strcmp.
    bool operator==(const char*) const = delete;
    bool operator!=(const char*) const = delete;

    /// The text, "" for the empty path. Valid until this object is changed or destroyed.
    operator const char*() const;

    /// Returns whether this is the empty path.
    bool Empty() const;

    /// Returns what follows the last separator; the whole text where there is none.
    ///
    ///     c:\a\b.txt => b.txt        c: => c:        the empty path => ""
    std::string Name() const;

    /// The path of what precedes the last separator; a copy of this path where there is none.
    ///
    ///     c:\a\b => c:\a        c:\a => c:        c: => c:        the empty path => the empty path
    Path Parent() const;

    /// Returns what follows the last "." of the name; "" where the name has none.
    ///
    ///     c:\a.tar.gz => gz        c:\.profile => profile        c:\a. => ""        c:\a.b\c => ""
    std::string Extension() const;

    /// Whether there is such a file or directory. False for the empty path.
    bool Exists() const;

    /// False where there is no such file or directory. Symbolic links are followed.
    bool IsDirectory() const;
    /// Whether its owner may execute it: on Windows a directory, or a file with an executable's extension.
    bool IsExecutable() const;
    /// Whether its owner may write it: on Windows, whether it lacks the read-only attribute.
    bool IsWriteable() const;

    /// Bytes in the file; 0 where there is none. Of a directory whatever the system says.
    std::int64_t Size() const;

    /// Copies this file's bytes to `dest`, which is made, or overwritten. False when this is no readable file (a
    /// directory is none) or `dest` cannot be written; where that fails half-way, `dest` holds what was written by
    /// then. The whole file is held in memory meanwhile.
    bool CopyTheFile(const Path& dest);

    /// Renames this file or directory to `dest`; a file that cannot be renamed (to another volume, say) is copied and
    /// removed. False, and both are as before, when there is nothing to move or `dest` exists, even if it was made only
    /// during this call. True also when the copy was made and the original could not be removed. This object's text
    /// stays as it is.
    bool MoveTheFile(const Path& dest);

    /// Removes the file; of a symbolic link the link. False when there is none, for a directory, and when the system
    /// refuses.
    bool DeleteTheFile();

    /// Has the file removed, if it exists then, when the process exits or this library is unloaded, after the program's
    /// own static objects, which may still enter files, where it is linked with this library. The path may be
    /// entered more than once, before or after its file is made. Not to be called from two threads at once.
    void DeleteMeOnExit();

    /// Makes `p` the current directory, or the directory that holds it when `p` is a file or does not exist. False when
    /// that is none.
    static bool Chdir(const Path& p);

    /// The current directory as the system tells it, at most 4096 characters; "" when it does not. Characters that the
    /// narrow encoding lacks are replaced; relative texts are no paths then.
    static std::string GetCWD();

    /// A path in `dir` at which nothing exists yet: "Tmp", a count of eight hexadecimal digits, ".", `suffix`. A suffix
    /// may bring its own leading "."; null is "". The file is not made: the caller makes it. With `deleteOnExit` it is
    /// entered as by `DeleteMeOnExit`. The empty path when `dir` is no directory, and when the suffix spoils the name.
    ///
    ///     c:\tmp, false, "log"  => c:\tmp\Tmp0000494e.log
    ///     c:\tmp, false, ".log" => c:\tmp\Tmp0000494f.log
    ///
    /// The C library's `rand` is seeded anew at every call. Several threads may ask at once, but for `deleteOnExit`;
    /// they get different names. Another process may get the same one.
    static Path GetTempFile(const Path& dir, bool deleteOnExit, const char* suffix);

    /// The same in the directory for temporary files: the first of the variables TMP and TEMP that names something that
    /// exists, else a fixed directory. It is chosen at the first call of the process.
    static Path GetTempFile(bool deleteOnExit, const char* suffix);

    /// The path as a "file" URI with forward slashes; nothing is escaped. With a blank in the path the URI stands in
    /// double quotes, unless `noQuotes`.
    ///
    ///     c:\a => file:///c:/a        c:\a b => "file:///c:/a b"        c:\a b, noQuotes => file:///c:/a b
    ///     \\server\a => file://///server/a        the empty path => file:///
    std::string GetURI(bool noQuotes) const;

    /// The text for a command line: in double quotes when it has a blank.
    ///
    ///     c:\a => c:\a        c:\a b => "c:\a b"
    std::string GetPath4Shell() const;

private:
    void fix(std::size_t start);

    std::string text_;
    /// The text has a blank.
    bool hasSpace_ = false;
    /// The current directory was put in front of a relative text.
    bool absolute_ = false;
};

}  // namespace File
}  // namespace ZelU

#endif
