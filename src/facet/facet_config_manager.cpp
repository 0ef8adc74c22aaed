#include <zelutil/facet/facet_config_manager.h>

#include <zelutil/c_api.h>
#include <zelutil/file/hierarchy.h>
#include <zelutil/file/path.h>

#include <optional>
#include <utility>

#include "facet/facet_groups.h"
#include "json/document.h"
#include "platform/platform.h"
#include "util/process_wide.h"

namespace ZelU::FACET {

namespace {

using zelutil::facet::FacetType;

constexpr char kFileName[] = "facet_settings.cfg";
constexpr char kDirectory[] = "share/qtxsetup/canvas/resources/tessel/";

/// Without an installation there is no file; who asks for a facet is not to see the exception.
File::Path findFacetFile() {
    try {
        return File::Hierarchy::FindFile(kFileName, kDirectory);
    } catch (const File::Exceptions::HierarchyNotFound&) {
        return {};
    }
}

std::optional<std::string> readFacetFile() {
    const File::Path path = findFacetFile();
    if (!path.Exists()) {
        return std::nullopt;
    }
    // Kept deliberately: a path with a blank comes in double quotes, which no file has in its name. Hosts installed
    // there have always run without facets.
    const std::string text = path.GetPath4Shell();
    return zelutil::platform::readFile(text.c_str(), zelutil::json::kMaximumTextSize);
}

}  // namespace

struct FacetConfigManager::Contents {
    const FacetType* find(const char* header, const char* name) const {
        return header == nullptr || name == nullptr ? nullptr : groups.find(header, name);
    }

    zelutil::facet::FacetGroups groups;
    /// The file as it was last read.
    std::string rawText;
};

FacetConfigManager& FacetConfigManager::GetInstance() {
    static zelutil::ProcessWide<FacetConfigManager> instance([] { return new FacetConfigManager; });
    return instance.get();
}

FacetConfigManager::FacetConfigManager() : contents_(std::make_unique<Contents>()) { readfacetSettings(); }

FacetConfigManager::FacetConfigManager(const FacetConfigManager& other)
    : contents_(std::make_unique<Contents>(*other.contents_)) {}

FacetConfigManager& FacetConfigManager::operator=(const FacetConfigManager& other) {
    *contents_ = *other.contents_;
    return *this;
}

FacetConfigManager::~FacetConfigManager() = default;

void FacetConfigManager::readfacetSettings() {
    if (auto text = readFacetFile()) {
        contents_->groups.add(*text);
        contents_->rawText = std::move(*text);
    }
}

bool FacetConfigManager::facetDefined(const char* header, const char* name) const {
    return contents_->find(header, name) != nullptr;
}

int FacetConfigManager::facetType(const char* header, const char* name) const {
    const FacetType* const type = contents_->find(header, name);
    return type == nullptr ? -1 : static_cast<int>(*type);
}

}  // namespace ZelU::FACET

using ZelU::FACET::FacetConfigManager;

int ZelUGetFacetType(const char* header, const char* name) {
    return FacetConfigManager::GetInstance().facetType(header, name);
}

bool ZelUIsFacetDefined(const char* header, const char* name) {
    return FacetConfigManager::GetInstance().facetDefined(header, name);
}
