// A host's plug-in: a module that brings the library into the process and takes it out again. What it offers to the
// test are C functions, so that the test itself links nothing of the library.
#include <zelutil/zelutil.h>

#include <atomic>
#include <string>
#include <thread>

#include "support/killable.h"
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

/// A value in the library's registry, of a class that is the plug-in's own.
class Value : public ZelU::Registry::IValue {
public:
    explicit Value(void (*destroyed)()) : destroyed_(destroyed) {}
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;
    ~Value() noexcept(false) override { destroyed_(); }

private:
    void (*destroyed_)();
};

class ValueFactory : public ZelU::Registry::IValueFactory {
public:
    explicit ValueFactory(void (*destroyed)()) : destroyed_(destroyed) {}
    ZelU::Registry::IValue* Make() const override { return new Value(destroyed_); }

private:
    void (*destroyed_)();
};

class ValueShortcut : public ZelU::Registry::ShortcutBase {
public:
    using ShortcutBase::ShortcutBase;
    void install(void (*destroyed)()) const { set(ValueFactory(destroyed)); }
};

const ValueShortcut valueShortcut("zelutil.test.value");

/// An entry of the library's hash table.
class Entry : public ZelU::Hash::Hash<const char*>::IEntry {
public:
    explicit Entry(const char* key) : key_(key) {}
    const char* Key() const override { return key_.c_str(); }

private:
    std::string key_;
};

class EntryFactory : public ZelU::Hash::Hash<const char*>::IEntry::IFactory {
public:
    ZelU::Hash::Hash<const char*>::IEntry* NewEntry(const char* key) override { return new Entry(key); }
};

bool useHashTable() {
    EntryFactory factory;
    const auto table = ZelU::Hash::Hash<const char*>::Create(10, &factory, true);
    return table->Acquire("grid").Key() == std::string("grid") && table->Find("units") == nullptr;
}

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
           UCPActionManager::instance().getAction(1).first &&
           ZelU::FACET::FacetConfigManager::GetInstance().facetDefined("Net", "Length") && useHashTable();
}

/// Runs a function on a thread of the library's and waits for its end; whether the function was called.
ZELUTIL_TEST_EXPORT bool runThread(bool join) {
    static std::atomic<bool> called;
    called = false;
    ZelU::Thrd::Thread thread(
        [](void*) -> void* {
            called = true;
            return nullptr;
        },
        nullptr);
    if (join) {
        thread.Join();
    }
    while (thread.IsRunning()) {
        std::this_thread::yield();
    }
    return called;
}

/// Starts a thread of the library's that would run for ever, and kills it in its function.
ZELUTIL_TEST_EXPORT void killThread() {
    static zelutil::test::Progress progress;
    progress = 0;
    ZelU::Thrd::Thread thread(zelutil::test::sleepForEver, &progress);
    while (progress < 2) {
        std::this_thread::yield();
    }
    thread.Kill();
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

/// Puts a permanent value into the registry; `destroyed` is called when the registry destroys it.
ZELUTIL_TEST_EXPORT void installValue(void (*destroyed)()) { valueShortcut.install(destroyed); }
