#include <zelutil/facet/facet_config_manager.h>

#include <zelutil/c_api.h>

#include <optional>
#include <string>

#include "facet/facet_groups.h"
#include "file/installed_file.h"
#include "json/document.h"
#include "platform/files.h"
#include "util/process_wide.h"

namespace ZelU::FACET {

namespace {

using zelutil::facet::FacetType;

std::optional<std::string> readFacetFile() {
    const std::string path = zelutil::file::installedSettingsFile(zelutil::facet::kFacetFileName);
    return zelutil::platform::readFile(path.c_str(), zelutil::json::kMaximumTextSize);
}

}  // namespace

struct FacetConfigManager::Contents {
    const FacetType* find(const char* header, const char* name) const {
        return header == nullptr || name == nullptr ? nullptr : groups.find(header, name);
    }

    zelutil::facet::FacetGroups groups;
};

FacetConfigManager& FacetConfigManager::GetInstance() {
    static zelutil::ProcessWide<FacetConfigManager> instance([] { return new FacetConfigManager; });
    return instance.get();
}

FacetConfigManager::FacetConfigManager() : contents_(std::make_unique<Contents>()) { readfacetSettings(); }

FacetConfigManager::FacetConfigManager(const FacetConfigManager& other)
    : contents_(std::make_unique<Contents>(*other.contents_)) {}

FacetConfigManager& FacetConfigManager::operator=(const FacetConfigManager& other) {
    contents_ = std::make_unique<Contents>(*other.contents_);
    return *this;
}

FacetConfigManager::~FacetConfigManager() = default;

void FacetConfigManager::readfacetSettings() {
    if (const auto text = readFacetFile()) {
        contents_->groups.add(*text);
    }
}

bool FacetConfigManager::facetDefined(const char* header, const char* name) {
    return contents_->find(header, name) != nullptr;
}

int FacetConfigManager::facetType(const char* header, const char* name) {
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
