#ifndef ZELUTIL_FACET_FACET_CONFIG_MANAGER_H
#define ZELUTIL_FACET_FACET_CONFIG_MANAGER_H

#include <zelutil/export.h>

#include <memory>

namespace ZelU::FACET {

/// Knows the facets of the product: named properties of a constraint object, in groups, each numerical or not. They
/// come from the file "facet_settings.cfg" below share/qtxsetup/canvas/resources/tessel/ in the installation tree.
///
/// Headers and names are compared byte by byte. There is one manager in a process. Queries may run on several threads
/// at once, but not while the file is read again.
class ZELUTIL_API FacetConfigManager {
public:
    /// The manager of this process. The first call makes it and reads the file; calls that come meanwhile on other
    /// threads wait. It is destroyed when the library goes: exit functions and destructors of static objects of a
    /// program that is linked with this library may still ask it.
    static FacetConfigManager& GetInstance();

    /// A copy knows what the original knows; what either reads afterwards is its own.
    FacetConfigManager(const FacetConfigManager& other);
    /// Takes over what the other knows, and forgets what only this one knew.
    FacetConfigManager& operator=(const FacetConfigManager& other);
    ~FacetConfigManager();

    /// Reads the file, again after the first time, and adds what it finds. A group that is known already stays as it
    /// is; nothing is ever removed.
    ///
    /// No failure is reported: without an installation or a readable file nothing changes, and what has no place in the
    /// file is passed over. An installation path with a blank in it counts as unreadable. Where memory runs out, throws
    /// `std::bad_alloc`, and nothing has changed.
    void readfacetSettings();

    /// Whether the group `header` has a facet `name`. False when either is null.
    bool facetDefined(const char* header, const char* name);

    /// 1 for a numerical facet, 0 for another, -1 when there is no such group or facet, or when either text is null.
    int facetType(const char* header, const char* name);

private:
    FacetConfigManager();

    struct Contents;
    std::unique_ptr<Contents> contents_;
};

}  // namespace ZelU::FACET

#endif
