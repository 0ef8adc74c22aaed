#ifndef ZELUTIL_PLATFORM_CRITICAL_SECTION_H
#define ZELUTIL_PLATFORM_CRITICAL_SECTION_H

/// The system's locks. No function prints.
namespace zelutil::platform {

/// A lock that its holder may take again; it is free when it has been left as often as it was entered.
struct CriticalSection;

/// Throws `std::bad_alloc`.
CriticalSection* createCriticalSection();

/// Destroys it, entered or not. No thread may be waiting to enter.
void destroyCriticalSection(CriticalSection* section) noexcept;

/// Waits until the section is free or the calling thread's own.
void enterCriticalSection(CriticalSection* section) noexcept;

/// Leaves it once. Does nothing when the calling thread is not inside.
void leaveCriticalSection(CriticalSection* section) noexcept;

}  // namespace zelutil::platform

#endif
