// A host's plug-in: a module that brings the library into the process and takes it out again. What it offers to the
// test are C functions, so that the test itself links nothing of the library.
#include <zelutil/zelutil.h>

#include <string>

#include "support/module_export.h"

namespace {

/// An object of the plug-in's own that still asks for a setting when the plug-in goes.
class LastQuestion {
public:
    ~LastQuestion() {
        if (answer != nullptr) {
            answer(get_user_setting("grid"));
        }
    }

    void (*answer)(const char* value) = nullptr;
};

LastQuestion lastQuestion;

}  // namespace

/// Has the library remove the file when it goes.
ZELUTIL_TEST_EXPORT void enterForDeletion(const char* file) { ZelU::File::Path(std::string(file)).DeleteMeOnExit(); }

/// Asks the library's classes for this and that; whether every answer is right.
ZELUTIL_TEST_EXPORT bool useClasses() {
    using ZelU::ZelPanel::LayerType;
    using LayerNames = Smart::Enum::HRES<LayerType>;
    using ZelU::File::Path;

    const Path temporary = Path::GetTempFile(true, "txt");
    std::string upper = "GRID";
    UserPreferenceManager::convertSettingToLowercase(upper);
    ZelU::DbgChk chk("ZELUTIL_TEST_SWITCH");
    chk.overrideValue(true);
    auto& server = ZelU::Marl::Server::getInstance();
    server.registerApp(&server);
    return temporary.Extension() == "txt" && upper == "grid" && chk && server.getApplicationId(&server) == 0 &&
           LayerNames::Instance().Size() > 0 && UserPreferenceManager::GetInstance().getUserPrefSetting("grid") != "" &&
           UCPActionManager::instance().getAction(1).first;
}

/// Whether an exception of the library's arrives here as what it is.
ZELUTIL_TEST_EXPORT bool catchesExceptions() {
    try {
        ZelU::File::Hierarchy::GetRoot();
    } catch (const ZelU::File::Exceptions::Base& exception) {
        return dynamic_cast<const ZelU::File::Exceptions::HierarchyNotFound*>(&exception) != nullptr;
    }
    return false;
}

/// Has `answer` called with the setting "grid" while the plug-in is being unloaded.
ZELUTIL_TEST_EXPORT void askAtUnload(void (*answer)(const char* value)) { lastQuestion.answer = answer; }
