#include "platform/windows/replace_rules.h"

#include <cstdint>
#include <cstring>

namespace zelutil::platform::windows {
namespace {

constexpr DWORD kAttributesTakenOver =
    FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

/// More than the longest addition to a name.
constexpr std::size_t kRoomBeside = 40;

constexpr std::wstring_view kExtended = L"\\\\?\\";
constexpr std::wstring_view kExtendedNetwork = L"\\\\?\\UNC\\";
constexpr std::wstring_view kNetwork = L"\\\\";
constexpr std::wstring_view kDevice = L"\\\\.\\";
constexpr std::wstring_view kNative = L"\\??\\";
constexpr std::wstring_view kNativeNetwork = L"\\??\\UNC\\";

/// Places of the fields in a symbolic link's reparse data. The system's headers for applications do not declare them.
constexpr std::size_t kTagAt = 0;
constexpr std::size_t kNameOffsetAt = 8;
constexpr std::size_t kNameLengthAt = 10;
constexpr std::size_t kFlagsAt = 16;
constexpr std::size_t kNamesAt = 20;
constexpr std::uint32_t kRelativeFlag = 1;

bool beginsWith(std::wstring_view text, std::wstring_view prefix) { return text.substr(0, prefix.size()) == prefix; }

std::wstring replacePrefix(std::wstring_view text, std::wstring_view prefix, std::wstring_view replacement) {
    return std::wstring(replacement) + std::wstring(text.substr(prefix.size()));
}

/// A text without "..", which the extended form does not know, needs no such form: it is made again where it is needed.
std::wstring withoutExtension(std::wstring_view path) {
    if (beginsWith(path, kExtendedNetwork)) {
        return replacePrefix(path, kExtendedNetwork, kNetwork);
    }
    return std::wstring(beginsWith(path, kExtended) ? path.substr(kExtended.size()) : path);
}

template <typename Number>
Number numberAt(std::string_view data, std::size_t place) {
    Number number = 0;
    std::memcpy(&number, data.data() + place, sizeof number);
    return number;
}

}  // namespace

DWORD attributesOfNewFile(DWORD old) { return (old & kAttributesTakenOver) | FILE_ATTRIBUTE_ARCHIVE; }

bool isNamedStream(std::wstring_view name) { return name != L"::$DATA"; }

std::wstring pathWithRoomBeside(const std::wstring& path, const std::wstring& fullPath) {
    const bool hasRoom = fullPath.size() + kRoomBeside < MAX_PATH;
    if (hasRoom || fullPath.size() >= MAX_PATH || beginsWith(fullPath, kExtended) || beginsWith(fullPath, kDevice)) {
        return path;
    }
    return beginsWith(fullPath, kNetwork) ? replacePrefix(fullPath, kNetwork, kExtendedNetwork)
                                          : std::wstring(kExtended) + fullPath;
}

std::optional<std::wstring> targetOfLink(std::string_view reparseData, const std::wstring& link) {
    if (reparseData.size() < kNamesAt || numberAt<std::uint32_t>(reparseData, kTagAt) != IO_REPARSE_TAG_SYMLINK) {
        return std::nullopt;
    }
    const std::size_t start = kNamesAt + numberAt<std::uint16_t>(reparseData, kNameOffsetAt);
    const std::size_t length = numberAt<std::uint16_t>(reparseData, kNameLengthAt);
    if (length == 0 || length % sizeof(wchar_t) != 0 || start + length > reparseData.size()) {
        return std::nullopt;
    }
    std::wstring name(length / sizeof(wchar_t), L'\0');
    std::memcpy(name.data(), reparseData.data() + start, length);
    if ((numberAt<std::uint32_t>(reparseData, kFlagsAt) & kRelativeFlag) != 0) {
        const std::wstring base = withoutExtension(link);
        return base.substr(0, base.find_last_of(L"\\/:") + 1) + name;
    }
    if (beginsWith(name, kNativeNetwork)) {
        return replacePrefix(name, kNativeNetwork, kNetwork);
    }
    return beginsWith(name, kNative) ? name.substr(kNative.size()) : name;
}

}  // namespace zelutil::platform::windows
