// SPDX-License-Identifier: Apache-2.0
// The ids of types against those of Python's uuid.uuid5.

#include "automation/typed/type_id.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace fixtop {

namespace {

std::string Written(const InterfaceId& id) {
    char text[40];
    std::snprintf(text, sizeof text, "%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x", id.data1,
                  id.data2, id.data3, id.data4[0], id.data4[1], id.data4[2], id.data4[3],
                  id.data4[4], id.data4[5], id.data4[6], id.data4[7]);
    return text;
}

TEST(TypeId, is_that_of_another_program) {
    struct Row {
        std::string name;
        int major, minor;
        const char* expected;
    };
    // The longer ones fill a block of the hash up to its last byte, and beyond.
    const Row rows[] = {
        {"IQSIMaterialStream", 13, 2, "ab0e6083-4a28-50f9-9e03-a597e46a09b0"},
        {"IQSIMaterialStream", 13, 3, "9b6a47a6-6045-52c5-b9c5-3037f5a68f26"},
        {"IQSIMaterialStreamArray", 13, 2, "2e252049-a1be-598a-b39d-9d8b2cb5ebb5"},
        {"CCDMLib", 13, 2, "ef4d24b6-17a1-568b-9247-235ebe181d02"},
        {std::string(34, 'x'), 1, 0, "224722f3-6c3c-54c6-92dd-f302a364d356"},
        {std::string(35, 'x'), 1, 0, "c97856e4-0b9f-53d8-8258-018c676d83f7"},
        {std::string(36, 'x'), 1, 0, "dfccc77e-ace6-5cc3-9509-767fff537813"},
        {std::string(43, 'x'), 1, 0, "b3fbe5e4-7ea4-551c-b75d-cab07382db84"},
        {std::string(44, 'x'), 1, 0, "1fce1f09-d7d6-5e22-a2db-01bc8a5d3c97"},
        {std::string(45, 'x'), 1, 0, "0956a8f8-d383-55d8-8e04-c9ff004968f7"},
        {std::string(120, 'x'), 1, 0, "a61e312c-1d8b-5094-9497-989d7f6f7cf1"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.expected, Written(IdOfType(row.name, row.major, row.minor))) << row.name;
    }
}

}  // namespace

}  // namespace fixtop
