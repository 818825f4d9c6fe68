#include "tests/support/reading.h"

#include "exe/tree_items.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

Reading ReadBytes(const Bytes &bytes)
{
    Reading reading = {};
    FILE *file = OpenContent(bytes);
    reading.outcome = ProbeFile(nullptr, file);
    fclose(file);
    reading.failure = NotedFailure();
    ResourceEntry entry = {};
    for (LONG i = 0; i < openCatalog.count; i++) {
        GetEntry(openCatalog.entries, &entry, i);
        reading.entries.push_back(std::string(CategoryLabel(entry.category)) + " " + entry.name +
                                  " " + std::to_string(entry.size) + (entry.isWave ? " wave" : ""));
        const BYTE *data = (const BYTE *)GlobalLock(entry.data);
        reading.data.emplace_back(data, data + entry.size);
        GlobalUnlock(entry.data);
    }
    ReleaseCatalog(&openCatalog);
    EXPECT_EQ(openCatalog.entries, nullptr);
    EXPECT_EQ(openCatalog.count, 0);
    EXPECT_EQ(GlobalLock(entry.data), nullptr); // went with the catalogue
    return reading;
}

static void ExpectHonest(const Bytes &bytes, size_t whole)
{
    const Reading reading = ReadBytes(bytes);
    EXPECT_EQ(reading.outcome == ProbeRead, reading.failure == FailureNone);
    if (reading.outcome == ProbeRead && whole > 0) {
        EXPECT_EQ(reading.entries.size(), whole);
    }
    for (const Bytes &data : reading.data)
        EXPECT_LE(data.size(), bytes.size());
}

void ExpectHonestDamaged(const Bytes &good, size_t whole)
{
    for (size_t length = 0; length < good.size(); length++)
        ExpectHonest(Bytes(good.begin(), good.begin() + (ptrdiff_t)length), whole);
    Bytes bytes = good;
    for (size_t at = 60; at < good.size(); at++) {
        for (const int value : {0x00, 0x7F, 0x80, 0xFF}) {
            bytes[at] = (unsigned char)value;
            ExpectHonest(bytes, 0);
        }
        bytes[at] = good[at];
    }
}
