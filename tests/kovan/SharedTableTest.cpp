#include "kovan/KovanLuaSequencer/KVKLuaSharedTable.h"

#include <gtest/gtest.h>

namespace {

using Value = KVKLuaSharedTable::Value;

Value number(qint64 n)
{
    return std::make_shared<const KVKLuaSharedValue>(n);
}

Value text(std::size_t size)
{
    return std::make_shared<const KVKLuaSharedValue>(QByteArray(static_cast<qsizetype>(size), 'x'));
}

qint64 numberOf(const Value &value)
{
    return value ? std::get<qint64>(value->content()) : -1;
}

QByteArray operator""_key(const char *letters, std::size_t length)
{
    return {letters, static_cast<qsizetype>(length)};
}

TEST(SharedTable, KeepsWhatIsWrittenUntilNothingIs)
{
    KVKLuaSharedTable table;
    EXPECT_EQ(table.read("n"_key), nullptr);
    table.write("n"_key, number(4), 0);
    EXPECT_EQ(numberOf(table.read("n"_key)), 4);
    EXPECT_EQ(table.all().size(), 1U);
    table.write("n"_key, nullptr, 0);
    EXPECT_EQ(table.read("n"_key), nullptr);
    EXPECT_TRUE(table.all().empty());
}

TEST(SharedTable, ANumberAndItsTextAreTwoKeys)
{
    KVKLuaSharedTable table;
    table.write(qint64{1}, number(10), 0);
    table.write("1"_key, number(20), 0);
    EXPECT_EQ(numberOf(table.read(qint64{1})), 10);
    EXPECT_EQ(numberOf(table.read("1"_key)), 20);
}

TEST(SharedTable, IsAsLongAsItsKeysFollowEachOtherFromOne)
{
    KVKLuaSharedTable table;
    EXPECT_EQ(table.length(), 0);
    for (const qint64 key : {0, -1, 1, 2, 3, 5})
        table.write(key, number(key), 0);
    table.write("a"_key, number(0), 0);
    EXPECT_EQ(table.length(), 3);
    table.write(qint64{1}, nullptr, 0);
    EXPECT_EQ(table.length(), 0);
}

TEST(SharedTable, AnUpdateStoresItsValueWhenItEnds)
{
    KVKLuaSharedTable table;
    table.write("n"_key, number(4), 0);
    EXPECT_EQ(numberOf(table.beginUpdate("n"_key, 0)), 4);
    EXPECT_EQ(numberOf(table.read("n"_key)), 4);
    table.endUpdate("n"_key, number(5));
    EXPECT_EQ(numberOf(table.read("n"_key)), 5);
}

TEST(SharedTable, AnUpdateThatIsDroppedLeavesTheValue)
{
    KVKLuaSharedTable table;
    table.write("n"_key, number(4), 0);
    EXPECT_EQ(numberOf(table.beginUpdate("n"_key, 0)), 4);
    table.dropUpdate("n"_key);
    table.dropUpdate("n"_key);
    table.endUpdate("n"_key, number(5));
    EXPECT_EQ(numberOf(table.read("n"_key)), 4);
}

TEST(SharedTable, WhatOthersWriteDuringAnUpdateComesAfterIt)
{
    KVKLuaSharedTable table;
    EXPECT_EQ(table.beginUpdate("n"_key, 0), nullptr);
    table.write("n"_key, number(100), 1);
    table.endUpdate("n"_key, number(1));
    EXPECT_EQ(numberOf(table.read("n"_key)), 100);
    // The next one begins from there.
    EXPECT_EQ(numberOf(table.beginUpdate("n"_key, 0)), 100);
    table.endUpdate("n"_key, number(101));
    EXPECT_EQ(numberOf(table.read("n"_key)), 101);
}

TEST(SharedTable, WhatTheUpdatingOneWritesComesBeforeItsValue)
{
    KVKLuaSharedTable table;
    EXPECT_EQ(table.beginUpdate("n"_key, 0), nullptr);
    table.write("n"_key, number(100), 0);
    table.write("m"_key, number(7), 1);
    table.endUpdate("n"_key, number(1));
    EXPECT_EQ(numberOf(table.read("n"_key)), 1);
}

TEST(SharedTable, RefusesWhatItHasNoRoomForAndStaysAsItWas)
{
    KVKLuaSharedTable table;
    table.write("a"_key, text(KVKLuaSharedTable::MostMemory / 2), 0);
    table.write("b"_key, text(KVKLuaSharedTable::MostMemory / 4), 0);
    try {
        table.write("c"_key, text(KVKLuaSharedTable::MostMemory / 2), 0);
        ADD_FAILURE() << "was taken";
    } catch (const KVKLuaSharedTableError &problem) {
        EXPECT_STREQ(problem.what(),
                     "shared.c: there is no room for it; all shared values together may take 64 MiB");
    }
    EXPECT_EQ(table.read("c"_key), nullptr);
    // What is replaced makes room.
    table.write("a"_key, number(1), 0);
    table.write("c"_key, text(KVKLuaSharedTable::MostMemory / 2), 0);
    EXPECT_EQ(table.all().size(), 3U);
}

} // namespace
