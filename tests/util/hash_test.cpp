#include "support/counting_entries.h"
#include "support/murmur_twin.h"
#include "support/printed.h"
#include "support/virtual_function.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace zelutil::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class HashTable : public ::testing::Test {
protected:
    EntryLog log;
    CountingFactory factory{log};
    Smart::Pointer<Table> table = Table::Create(100, &factory, true);
};

// --- Keys -----------------------------------------------------------------------------------------------------------

TEST_F(HashTable, OneEntryServesAKeyAndItsCapitals) {
    Table::IEntry& entry = table->Acquire("clock/net_7");
    EXPECT_EQ(&table->Acquire("clock/net_7"), &entry);
    EXPECT_EQ(&table->Acquire("CLOCK/NET_7"), &entry);
    EXPECT_EQ(table->Find("Clock/Net_7"), &entry);
    EXPECT_STREQ(entry.Key(), "clock/net_7");
    EXPECT_THAT(log.asked, ElementsAre("clock/net_7"));
}

struct Pair {
    const char* a;
    const char* b;
};

TEST_F(HashTable, KeysThatHashAlikeAreYetTwoKeysUnlessOnlyTheCaseOfLettersDiffersOddity) {
    constexpr Pair kDifferent[] = {
        // 32 apart, but no letters: one hash, two keys.
        {"\x41\x40", "\x61\x60"},
        {"[", "{"},
        {"net^1", "net~1"},
        {"net]1", "net}1"},
        {"\x01", "!"},
        // No letters beyond ASCII, whatever the locale.
        {"\xC4", "\xE4"},
        // A key and its own beginning.
        {"net", "net "},
        {"", " "},
        {"ne", "net"},
    };
    for (const Pair& row : kDifferent) {
        EXPECT_NE(&table->Acquire(row.a), &table->Acquire(row.b)) << row.a << ", " << row.b;
        EXPECT_STREQ(table->Find(row.a)->Key(), row.a);
        EXPECT_STREQ(table->Find(row.b)->Key(), row.b);
    }
    constexpr Pair kSame[] = {
        {"AZ", "az"},
        {"\xC4x", "\xC4X"},
        {"1-B@", "1-b@"},
    };
    for (const Pair& row : kSame) {
        EXPECT_EQ(&table->Acquire(row.a), &table->Acquire(row.b)) << row.a << ", " << row.b;
    }
}

TEST_F(HashTable, ANullKeyCountsAsTheEmptyOne) {
    EXPECT_EQ(table->Find(nullptr), nullptr);
    Table::IEntry& entry = table->Acquire(nullptr);
    EXPECT_STREQ(entry.Key(), "");
    EXPECT_EQ(&table->Acquire(""), &entry);
    EXPECT_EQ(table->Find(nullptr), &entry);
    table->Remove(nullptr);
    EXPECT_EQ(table->Find(""), nullptr);
    EXPECT_THAT(log.deleted, ElementsAre(""));
}

TEST_F(HashTable, LongKeysDifferInTheirLastCharacter) {
    const std::string common(100'000, 'N');
    EXPECT_NE(&table->Acquire((common + "1").c_str()), &table->Acquire((common + "2").c_str()));
    EXPECT_EQ(table->Find((std::string(100'000, 'n') + "2").c_str())->Key(), common + "2");
}

// --- Find and Remove ------------------------------------------------------------------------------------------------

TEST_F(HashTable, FindMakesNothing) {
    table->Acquire("via");
    EXPECT_EQ(table->Find("pin"), nullptr);
    EXPECT_EQ(table->Find("pin"), nullptr);
    EXPECT_THAT(log.asked, ElementsAre("via"));
}

TEST_F(HashTable, RemoveDeletesTheEntryAndNoOther) {
    table->Acquire("via");
    table->Acquire("pin");
    table->Remove("VIA");
    EXPECT_THAT(log.deleted, ElementsAre("via"));
    EXPECT_EQ(table->Find("via"), nullptr);
    EXPECT_STREQ(table->Find("pin")->Key(), "pin");
}

TEST_F(HashTable, RemoveOfAnAbsentKeyDoesNothing) {
    table->Acquire("via");
    table->Remove("pin");
    table->Remove("via ");
    EXPECT_THAT(log.deleted, IsEmpty());
    EXPECT_NE(table->Find("via"), nullptr);
}

TEST_F(HashTable, ARemovedKeyCanBeAcquiredAnew) {
    table->Acquire("via");
    table->Remove("via");
    EXPECT_STREQ(table->Acquire("Via").Key(), "Via");
    EXPECT_THAT(log.asked, ElementsAre("via", "Via"));
}

TEST_F(HashTable, BeforeItHasBucketsATableFindsAndRemovesNothing) {
    EXPECT_EQ(table->Find("via"), nullptr);
    table->Remove("via");
    EXPECT_THAT(log.asked, IsEmpty());
    EXPECT_STREQ(table->Acquire("via").Key(), "via");
}

TEST_F(HashTable, InitializeAloneMakesAnEmptyTable) {
    table->Initialize();
    EXPECT_EQ(table->Find("via"), nullptr);
    table->Remove("via");
    EXPECT_THAT(log.asked, IsEmpty());
}

TEST_F(HashTable, InitializeKeepsTheEntriesThatAreThere) {
    Table::IEntry& entry = table->Acquire("via");
    table->Initialize();
    EXPECT_EQ(table->Find("via"), &entry);
    EXPECT_THAT(log.deleted, IsEmpty());
}

TEST_F(HashTable, IsSilentWhileItDoesNotRehash) {
    const std::string printed = printedBy([this] {
        table->Initialize();
        for (int i = 0; i < 50; ++i) {
            table->Acquire(std::to_string(i).c_str());
            table->Find(std::to_string(i + 1).c_str());
            table->Remove(std::to_string(i - 3).c_str());
        }
        table = Smart::Pointer<Table>();
    });
    EXPECT_EQ(printed, "");
}

// --- Ownership ------------------------------------------------------------------------------------------------------

TEST_F(HashTable, TheLastHolderDeletesTheTableAndEveryEntryOnce) {
    for (const char* const key : {"via", "pin", "net"}) {
        table->Acquire(key);
    }
    table->Remove("pin");
    Smart::Pointer<Table> other = table;
    table = Smart::Pointer<Table>();
    EXPECT_THAT(log.deleted, ElementsAre("pin"));
    EXPECT_STREQ(other->Find("net")->Key(), "net");
    other = Smart::Pointer<Table>();
    EXPECT_THAT(log.deleted, UnorderedElementsAre("pin", "via", "net"));
}

TEST_F(HashTable, ATableThatWasNeverUsedGoesQuietly) {
    table = Smart::Pointer<Table>();
    EXPECT_THAT(log.asked, IsEmpty());
    EXPECT_THAT(log.deleted, IsEmpty());
}

TEST_F(HashTable, AssignmentLeavesBothTablesTheirEntries) {
    const Smart::Pointer<Table> other = Table::Create(1000, &factory, false);
    table->Acquire("via");
    other->Acquire("pin");
    *table = *other;
    EXPECT_NE(table->Find("via"), nullptr);
    EXPECT_EQ(table->Find("pin"), nullptr);
    EXPECT_NE(other->Find("pin"), nullptr);
    EXPECT_THAT(log.deleted, IsEmpty());
}

// --- Factories ------------------------------------------------------------------------------------------------------

TEST_F(HashTable, WhatTheFactoryThrowsPassesAndTheTableStaysWhole) {
    table->Acquire("via");
    factory.before = [](const char*) { throw std::runtime_error("no pin today"); };
    EXPECT_THROW(table->Acquire("pin"), std::runtime_error);
    EXPECT_EQ(table->Find("pin"), nullptr);
    EXPECT_NE(table->Find("via"), nullptr);
    factory.before = nullptr;
    EXPECT_STREQ(table->Acquire("pin").Key(), "pin");
    EXPECT_THAT(log.asked, ElementsAre("via", "pin", "pin"));
    EXPECT_THAT(log.deleted, IsEmpty());
}

class EmptyHandedFactory : public Table::IEntry::IFactory {
public:
    Table::IEntry* NewEntry(const char*) override {
        ++calls;
        return nullptr;
    }
    int calls = 0;
};

TEST(HashTableFactory, ThatAnswersNullIsOutOfMemory) {
    EmptyHandedFactory factory;
    const Smart::Pointer<Table> table = Table::Create(0, &factory, true);
    EXPECT_THROW(table->Acquire("via"), std::bad_alloc);
    EXPECT_EQ(table->Find("via"), nullptr);
    EXPECT_THROW(table->Acquire("via"), std::bad_alloc);
    EXPECT_EQ(factory.calls, 2);
}

TEST(HashTableFactory, ThatIsMissingMakesNothing) {
    const Smart::Pointer<Table> table = Table::Create(0, nullptr, true);
    EXPECT_THROW(table->Acquire("via"), std::bad_alloc);
    EXPECT_EQ(table->Find("via"), nullptr);
}

TEST_F(HashTable, AFactoryMayUseTheTable) {
    // Each entry brings its predecessor with it; the nested additions fill chains and rehash under the outer ones.
    factory.before = [this](const char* key) {
        const int number = std::stoi(key);
        if (number > 0) {
            table->Acquire(std::to_string(number - 1).c_str());
        }
    };
    const std::string printed = printedBy([this] { table->Acquire("2000"); });
    EXPECT_NE(printed, "");
    EXPECT_EQ(log.asked.size(), 2001U);
    for (int number = 0; number <= 2000; ++number) {
        const std::string key = std::to_string(number);
        ASSERT_NE(table->Find(key.c_str()), nullptr) << key;
        EXPECT_EQ(table->Find(key.c_str())->Key(), key);
    }
    table = Smart::Pointer<Table>();
    EXPECT_EQ(log.deleted.size(), 2001U);
}

/// Removes an entry and then does what it is told to.
class RemovingFactory : public Table::IEntry::IFactory {
public:
    explicit RemovingFactory(EntryLog& log) : entries_(log) {}

    Table::IEntry* NewEntry(const char* key) override {
        if (!removed.empty()) {
            table->Remove(removed.c_str());
        }
        if (failing) {
            throw std::runtime_error("no entry today");
        }
        return emptyHanded ? nullptr : entries_.NewEntry(key);
    }

    Smart::Pointer<Table> table;
    std::string removed;
    bool failing = false;
    bool emptyHanded = false;

private:
    CountingFactory entries_;
};

TEST(HashTableFactory, MayRemoveAnyEntryOfTheChainItAddsTo) {
    const std::vector<std::string> keys = keysOfBucket(7, 211, 5);
    for (const bool autoRehash : {false, true}) {
        for (std::size_t gone = 0; gone < 3; ++gone) {
            EntryLog log;
            RemovingFactory factory(log);
            factory.table = Table::Create(0, &factory, autoRehash);
            for (std::size_t i = 0; i < 3; ++i) {
                factory.table->Acquire(keys[i].c_str());
            }
            factory.removed = keys[gone];
            EXPECT_EQ(factory.table->Acquire(keys[3].c_str()).Key(), keys[3]);
            factory.removed.clear();
            for (std::size_t i = 0; i < 4; ++i) {
                EXPECT_EQ(factory.table->Find(keys[i].c_str()) == nullptr, i == gone) << gone << " " << i;
            }
            factory.table->Acquire(keys[4].c_str());
            EXPECT_THAT(log.deleted, ElementsAre(keys[gone]));
            // Empties the holder first: the table is not used during its own destruction.
            Smart::Pointer<Table>(std::move(factory.table));
            EXPECT_EQ(log.deleted.size(), 5U);
        }
    }
}

TEST(HashTableFactory, ThatRemovesAndThenMakesNothingLeavesTheRest) {
    const std::vector<std::string> keys = keysOfBucket(7, 211, 3);
    for (const bool failing : {false, true}) {
        EntryLog log;
        RemovingFactory factory(log);
        factory.table = Table::Create(0, &factory, true);
        factory.table->Acquire(keys[0].c_str());
        factory.table->Acquire(keys[1].c_str());
        factory.removed = keys[1];
        factory.failing = failing;
        factory.emptyHanded = !failing;
        EXPECT_ANY_THROW(factory.table->Acquire(keys[2].c_str()));
        EXPECT_NE(factory.table->Find(keys[0].c_str()), nullptr);
        EXPECT_EQ(factory.table->Find(keys[1].c_str()), nullptr);
        EXPECT_EQ(factory.table->Find(keys[2].c_str()), nullptr);
        EXPECT_THAT(log.deleted, ElementsAre(keys[1]));
        Smart::Pointer<Table>(std::move(factory.table));
        EXPECT_EQ(log.deleted.size(), 2U);
    }
}

class EntryWithCompanion : public Table::IEntry {
public:
    EntryWithCompanion(std::string key, const Smart::Pointer<Table>& table) : key_(std::move(key)), table_(table) {}
    ~EntryWithCompanion() override {
        if (table_) {
            table_->Remove((key_ + "'").c_str());
        }
    }
    const char* Key() const override { return key_.c_str(); }

private:
    std::string key_;
    const Smart::Pointer<Table>& table_;
};

class CompanionFactory : public Table::IEntry::IFactory {
public:
    Table::IEntry* NewEntry(const char* key) override { return new EntryWithCompanion(key, table); }
    Smart::Pointer<Table> table;
};

TEST(HashTableEntry, MayUseTheTableWhileItIsRemoved) {
    CompanionFactory factory;
    factory.table = Table::Create(0, &factory, true);
    for (const char* const key : {"net", "net'", "net''", "pin"}) {
        factory.table->Acquire(key);
    }
    factory.table->Remove("net");
    EXPECT_EQ(factory.table->Find("net"), nullptr);
    EXPECT_EQ(factory.table->Find("net'"), nullptr);
    EXPECT_EQ(factory.table->Find("net''"), nullptr);
    EXPECT_NE(factory.table->Find("pin"), nullptr);
    // Empties the holder first: the table is not used during its own destruction.
    Smart::Pointer<Table>(std::move(factory.table));
}

// --- What programs compiled earlier rely on -------------------------------------------------------------------------

TEST_F(HashTable, ItsOperationsFollowTheDestructorInOrder) {
    Table* const object = table.get();
    virtualFunction<void (*)(Table*)>(object, 5)(object);  // Initialize
    Table::IEntry& entry =
        *virtualFunction<Table::IEntry* (*)(Table*, const char*)>(object, 2)(object, "via");                // Acquire
    EXPECT_EQ(virtualFunction<Table::IEntry* (*)(Table*, const char*)>(object, 3)(object, "via"), &entry);  // Find
    EXPECT_STREQ(virtualFunction<const char* (*)(const void*)>(&entry, 2)(&entry), "via");                  // Key
    virtualFunction<void (*)(Table*, const char*)>(object, 4)(object, "via");                               // Remove
    EXPECT_THAT(log.deleted, ElementsAre("via"));
    Table::IEntry* const made =
        virtualFunction<Table::IEntry* (*)(void*, const char*)>(&factory, 0)(&factory, "pin");  // NewEntry
    EXPECT_STREQ(made->Key(), "pin");
    delete made;
}

TEST_F(HashTable, ItsInnerOperationsFollowThePublicOnesInOrder) {
    using EqualFunction = bool (*)(const void*, const char*, const char*);
    using IndexFunction = unsigned (*)(const void*, const char*);
    using GrowFunction = void (*)(void*);
    const Smart::Pointer<Table> asked = Table::Create(100, &factory, false);
    Table* const object = asked.get();
    const auto equal = virtualFunction<EqualFunction>(object, 6);
    EXPECT_TRUE(equal(object, "net_GND", "NET_gnd"));
    EXPECT_FALSE(equal(object, "A@", "a`"));
    const auto index = virtualFunction<IndexFunction>(object, 7);
    for (const std::string key : {"", "via", "VIA", "a longer key"}) {
        EXPECT_EQ(index(object, key.c_str()), keyHash(key) % 100) << key;
    }
    virtualFunction<GrowFunction>(object, 8)(object);
    EXPECT_EQ(index(object, "via"), keyHash("via") % 211);
    EXPECT_EQ(index(object, "VIA"), keyHash("via") % 211);
    // With the buckets of the next size, as for any table that has 211.
    asked->Initialize();
    EXPECT_EQ(index(object, "via"), keyHash("via") % 431);
    EXPECT_EQ(index(object, nullptr), keyHash("") % 431);
    const Smart::Pointer<Table> none = Table::Create(0, &factory, false);
    EXPECT_EQ(index(none.get(), "via"), 0U);
}

TEST(HashTableClass, IsAbstractAndCopiedByAssignmentOnly) {
    EXPECT_TRUE(std::is_abstract_v<Table>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Table>);
    EXPECT_TRUE(std::is_copy_assignable_v<Table>);
    EXPECT_FALSE(std::is_copy_constructible_v<Table>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Table::IEntry>);
}

}  // namespace
}  // namespace zelutil::test
