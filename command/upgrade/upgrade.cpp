#include "command/upgrade/upgrade.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>

#include "command/sections.h"
#include "json/document.h"
#include "platform/native_paths.h"
#include "prefs/user_settings_file.h"

namespace zelutil::command::upgrade {
namespace {

namespace fs = std::filesystem;
using lint::FileKind;
using Status = UserResult::Status;

/// Returns whether it is an object without members, as a user's file without values may be.
bool isEmptyObject(json::View root) { return root.isObject() && root.members().begin() == root.members().end(); }

FileKind kindOfUsers(json::View root) {
    const FileKind kind = isEmptyObject(root) ? FileKind::User : lint::kindOf(root);
    return kind == FileKind::User && holdsNoSection(root) ? FileKind::Unknown : kind;
}

void compareRoot(Comparison& comparison, json::View root, UserResult& result) {
    result.kind = kindOfUsers(root);
    if (result.kind == FileKind::User) {
        result.effect = comparison.effectOn(root);
        result.status = Status::Compared;
    } else {
        result.status = result.kind == FileKind::Defaults ? Status::Defaults : Status::Foreign;
    }
}

/// Reads the file as a start reads it.
void compareFile(Comparison& comparison, UserResult& result) {
    const auto path = platform::textOfNativePath(result.file);
    if (!path) {
        result.status = Status::NoPath;
        return;
    }
    prefs::UserSettingsFile file;
    file.read(*path, [&](std::string_view text) {
        const json::Document document(text);
        if (document.valid()) {
            compareRoot(comparison, document.root(), result);
        }
        return document.valid();
    });
    if (file.unreadAtStart() || file.wasDirectoryAtStart()) {
        result.status = Status::Unread;
    }
}

class Workers {
public:
    Workers(const std::string& oldDefaults, const std::string& newDefaults, Results& results,
            std::atomic<std::size_t>& done)
        : oldDefaults_(oldDefaults),
          newDefaults_(newDefaults),
          results_(results.users),
          shippedKeys_(results.shippedKeys),
          done_(done) {}

    void run(std::size_t count) {
        std::vector<std::thread> threads;
        while (threads.size() < count && start(threads)) {
        }
        if (threads.empty()) {
            work();
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        if (failure_) {
            std::rethrow_exception(failure_);
        }
    }

private:
    /// Returns false where the system lets the process have no further thread.
    bool start(std::vector<std::thread>& threads) {
        try {
            threads.emplace_back([this] { work(); });
            return true;
        } catch (const std::system_error&) {
            return false;
        }
    }

    /// They are the same in every thread.
    void setShippedKeys(const Comparison& comparison) {
        const std::lock_guard lock(mutex_);
        shippedKeys_ = comparison.shippedKeys();
    }

    void work() {
        try {
            Comparison comparison(oldDefaults_, newDefaults_);
            setShippedKeys(comparison);
            for (std::size_t number = next_++; number < results_.size(); number = next_++) {
                compareFile(comparison, results_[number]);
                ++done_;
            }
        } catch (...) {
            next_ = results_.size();
            const std::lock_guard lock(mutex_);
            failure_ = std::current_exception();
        }
    }

    const std::string& oldDefaults_;
    const std::string& newDefaults_;
    std::vector<UserResult>& results_;
    std::vector<ChangedKey>& shippedKeys_;
    std::atomic<std::size_t>& done_;
    std::atomic<std::size_t> next_{0};
    std::mutex mutex_;
    std::exception_ptr failure_;
};

}  // namespace

const char* nameOf(Status status) {
    switch (status) {
        case Status::Compared:
            return "compared";
        case Status::Missing:
            return "missing";
        case Status::NoPath:
            return "not-spellable";
        case Status::Defaults:
            return "defaults";
        case Status::Foreign:
            return "not-a-users-file";
        case Status::Unread:
            break;
    }
    return "unread";
}

Results compareAll(const std::string& oldDefaults, const std::string& newDefaults, const std::vector<fs::path>& files,
                   std::size_t threads, std::atomic<std::size_t>& done) {
    Results results;
    results.users.resize(files.size());
    for (std::size_t number = 0; number < files.size(); ++number) {
        results.users[number].file = files[number];
    }
    Workers(oldDefaults, newDefaults, results, done)
        .run(std::clamp<std::size_t>(threads, 1, std::max<std::size_t>(files.size(), 1)));
    return results;
}

}  // namespace zelutil::command::upgrade
