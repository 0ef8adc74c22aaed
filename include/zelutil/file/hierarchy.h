#ifndef ZELUTIL_FILE_HIERARCHY_H
#define ZELUTIL_FILE_HIERARCHY_H

#include <zelutil/export.h>
#include <zelutil/file/path.h>

namespace ZelU::File {

namespace Exceptions {

/// Every exception of this namespace derives from this.
class ZELUTIL_API Base {
public:
    Base() = default;
    Base(const Base&) = default;
    Base& operator=(const Base&) = default;
    virtual ~Base();
};

/// No installation tree could be found.
class ZELUTIL_API HierarchyNotFound : public Base {
public:
    /// Writes two lines, which tell the user to put `<qtxroot>/tools/bin` into the PATH, to standard output and then to
    /// standard error. Copying writes nothing.
    HierarchyNotFound();
    HierarchyNotFound(const HierarchyNotFound&) = default;
    HierarchyNotFound& operator=(const HierarchyNotFound&) = default;
    ~HierarchyNotFound() override;
};

}  // namespace Exceptions

/// Finds where the product is installed, where the user's environment is, and files in them.
///
/// A host calls `GetRoot` before anything else of this library. What is first to need the root gets its exception, and
/// most that need it, the first use of the preferences and of the facets among them, catch it and go on without their
/// files; from then on `GetRoot` throws no more, and the host never learns that there is no installation.
///
/// The root is looked for at the first call that needs it and kept. All operations may be called on several threads at
/// once, the first calls too; two that come first may both search. No lock is held during a search: the common library
/// may call back into the host, and the host any operation here.
///
/// Exit functions and destructors of static objects of a program that is linked with this library may still call
/// everything here.
class ZELUTIL_API Hierarchy {
public:
    Hierarchy() = delete;

    /// The root of the installation tree, from the first of these that knows it:
    ///
    /// 1. the common library: the parent of the tools directory it names;
    /// 2. this library's own file, when it lies in `<root>/tools*/bin*`;
    /// 3. the first directory that holds a file named as this library, in a tree with share/pcb/zelmgr/zeldict.l: the
    ///    directory tools/bin below the first defined one of "QTXROOT", "QTX_ROOT" and "QTXINSTDIR", then the entries
    ///    of "PATH". The tree is `<root>` for `<root>/tools/bin` and for `<root>/tools/lib/64bit`.
    ///
    /// Throws `Exceptions::HierarchyNotFound` when none does. The call after that answers the last directory tried, or
    /// looks again when the last one was an empty entry. The result is empty when the common library names an empty
    /// directory.
    ///
    /// While the common library reports that it is not initialised, what was found first is answered, and looked for
    /// again at the next call. The path referred to does not change, and stays valid until the library is unloaded;
    /// another call may return another one, as told here. With "QTX_ZELUTIL_DEBUG" defined the steps of a search are
    /// printed on standard output.
    static const Path& GetRoot();

    /// The user's environment directory, "pcbenv" below the home directory, whether it exists or not. Read from the
    /// environment at the first call and kept, but for the empty path (a home directory that is no path). The path
    /// referred to does not change, and stays valid until the library is unloaded.
    ///
    ///     HOMEDRIVE=C: HOMEPATH=\Users\ann => C:\Users\ann\pcbenv
    ///     HOMEDRIVE=C:                     => C:\pcbenv
    ///     HOMEPATH=\Users\ann              => <current directory>\\Users\ann\pcbenv
    ///     neither                          => <current directory>\\pcbenv
    static const Path& GetPcbEnv();

    /// The file or directory `name` in the relative directory `dir`, or the empty path when there is none or when an
    /// argument is null.
    ///
    /// When `dir` begins with "share/local" and "QTX_SITE" names a site directory, the site comes first: for "f" in
    /// "share/local/pcb" these are tried, and the root is not asked for unless it comes to the last:
    ///
    ///     <site>\pcb\f    <site>\f    <root>\share\local\pcb\f
    ///
    /// Throws what `GetRoot` throws.
    static Path FindFile(const char* name, const char* dir);

    /// The executable `name` in the directory `dir` below the root (null: the root itself), with ".exe" as written and
    /// then the other way round; the empty path when neither is there with permission to execute, and for a null
    /// `name`, for which the root is not asked for.
    ///
    ///     "edit"      => edit, then edit.exe
    ///     "edit.exe"  => edit.exe, then edit
    ///     "a.exe.old" => a.exe.old, then a
    ///
    /// Throws what `GetRoot` throws.
    static Path FindExe(const char* name, const char* dir);

    /// The loadable library with the base name `name`, or the empty path when there is none and for a null `name`, for
    /// which the root is not asked for. For "abc" in "tools" (a null `dir` is the root itself):
    ///
    ///     tools\abc64.dll            tools\abc.dll
    ///     tools\bin\abc64.dll        tools\bin\abc.dll
    ///     tools\lib\abc64.dll        tools\lib\abc.dll
    ///     tools\lib\64bit\abc64.dll  tools\lib\64bit\abc.dll
    ///
    /// Throws what `GetRoot` throws.
    static Path FindDll(const char* name, const char* dir);
};

}  // namespace ZelU::File

#endif
