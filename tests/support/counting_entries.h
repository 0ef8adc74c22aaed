#ifndef ZELUTIL_TESTS_SUPPORT_COUNTING_ENTRIES_H
#define ZELUTIL_TESTS_SUPPORT_COUNTING_ENTRIES_H

#include <zelutil/util/hash.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace zelutil::test {

using Table = ZelU::Hash::Hash<const char*>;

/// Tells what became of a factory's entries.
struct EntryLog {
    std::vector<std::string> asked;
    std::vector<std::string> deleted;
};

class CountedEntry : public Table::IEntry {
public:
    CountedEntry(std::string key, EntryLog& log) : key_(std::move(key)), log_(log) {}
    ~CountedEntry() override { log_.deleted.push_back(key_); }

    const char* Key() const override { return key_.c_str(); }

private:
    std::string key_;
    EntryLog& log_;
};

/// Keeps a log, which must outlive the entries.
class CountingFactory : public Table::IEntry::IFactory {
public:
    explicit CountingFactory(EntryLog& log) : log_(log) {}

    Table::IEntry* NewEntry(const char* key) override {
        log_.asked.emplace_back(key);
        if (before) {
            before(key);
        }
        return new CountedEntry(key, log_);
    }

    /// Runs before an entry is made.
    std::function<void(const char* key)> before;

private:
    EntryLog& log_;
};

}  // namespace zelutil::test

#endif
