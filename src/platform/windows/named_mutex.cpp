#include "platform/windows/named_mutex.h"

namespace zelutil::platform::windows {
namespace {

HANDLE createMutex(const std::wstring& name) {
    // Processes of other users take their turns too.
    SECURITY_DESCRIPTOR everybody{};
    InitializeSecurityDescriptor(&everybody, SECURITY_DESCRIPTOR_REVISION);
    SetSecurityDescriptorDacl(&everybody, TRUE, nullptr, FALSE);
    SECURITY_ATTRIBUTES attributes{sizeof(SECURITY_ATTRIBUTES), &everybody, FALSE};
    return CreateMutexW(&attributes, FALSE, name.c_str());
}

}  // namespace

HANDLE openMutex(const std::wstring& name) {
    const HANDLE mutex = createMutex(L"Global\\" + name);
    // Not every process may reach beyond its own session.
    return mutex != nullptr ? mutex : createMutex(L"Local\\" + name);
}

bool takeMutex(HANDLE mutex, DWORD milliseconds) {
    // A process that died in the middle of its turn has handed it on.
    const DWORD result = WaitForSingleObject(mutex, milliseconds);
    return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

}  // namespace zelutil::platform::windows
