#ifndef ZELUTIL_PLATFORM_PLATFORM_H
#define ZELUTIL_PLATFORM_PLATFORM_H

/// The one door to the operating system, and the guide for porting the library: each header beside this one declares
/// plain functions of one theme, and one folder per system defines them, in a file of the header's name and in the
/// header's order.
///
/// Every path that crosses a header is a Windows text in the narrow (ANSI) encoding: backslash or slash separates, a
/// drive letter and a colon may lead. Where the system has no drives, the drive "Z:" is its root directory: a text with
/// another drive letter, a network text (two leading separators) and a text that holds one of `" * ? < > |` names no
/// file. A drive letter and a colon alone name the drive's root directory.
///
/// No function prints. None throws but for lack of memory.
#include "platform/critical_section.h"
#include "platform/discard_exceptions.h"
#include "platform/environment.h"
#include "platform/file_turn.h"
#include "platform/files.h"
#include "platform/kill_shield.h"
#include "platform/modules.h"
#include "platform/native_paths.h"
#include "platform/replace_file.h"
#include "platform/thread_lock.h"
#include "platform/threads.h"

#endif
