// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <vector>

#include "core/catalogue.h"
#include "core/error.h"

namespace morvane {
namespace {

constexpr int kSensors = 3;

// Row k (1-based) holds k, k + 1 and k + 2, each modulo 251.
uint8_t byte_of(size_t entry, int sensor) { return static_cast<uint8_t>((entry + static_cast<size_t>(sensor) - 1) % 251); }

void append_entries(HKSensorTable& table, size_t first, size_t last, uint8_t add = 0) {
  std::vector<uint8_t> rows;
  for (size_t k = first; k <= last; ++k) {
    for (int s = 1; s <= kSensors; ++s) rows.push_back(static_cast<uint8_t>(byte_of(k, s) + add));
  }
  table.append_rows(rows.data(), static_cast<int32_t>(last - first + 1));
}

TEST(HousekeepingSensorTable, AColumnReadsItsSensorInPlaceAcrossChunks) {
  HKSensorTable table;
  table.reset(kSensors);
  const size_t entries = HKSensorColumn::kChunkRows + 7;  // into a second chunk
  append_entries(table, 1, entries);
  for (int sensor = 1; sensor <= kSensors; ++sensor) {
    const HKSensorColumn column = table.column(sensor, static_cast<int32_t>(entries));
    ASSERT_EQ(column.size(), entries);
    EXPECT_EQ(column.stride(), static_cast<size_t>(kSensors));
    for (const size_t p : {size_t{0}, size_t{1}, HKSensorColumn::kChunkRows - 1, HKSensorColumn::kChunkRows,
                           entries - 1}) {
      EXPECT_EQ(column[p], table.at(sensor, static_cast<int32_t>(p + 1))) << "sensor " << sensor << " element " << p;
      EXPECT_EQ(column[p], byte_of(p + 1, sensor));
    }
    // A run from a chunk's start is read with the stride.
    const uint8_t* run = column.at(HKSensorColumn::kChunkRows);
    for (size_t i = 0; i < 7; ++i) EXPECT_EQ(run[i * column.stride()], byte_of(HKSensorColumn::kChunkRows + i + 1, sensor));
  }
  EXPECT_EQ(table.column(2, 5).size(), 5u);
  EXPECT_EQ(table.column(9, 0).size(), 0u);
  for (const auto& [sensor, count] : {std::pair{0, 1}, std::pair{kSensors + 1, 1}, std::pair{1, -1},
                                      std::pair{1, static_cast<int>(entries) + 1}}) {
    EXPECT_THROW(table.column(sensor, count), RuntimeError) << sensor << " " << count;
  }
}

TEST(HousekeepingSensorTable, AColumnKeepsItsBytesWhenTheTableGrowsOrIsLoadedAnew) {
  HKSensorTable table;
  table.reset(kSensors);
  append_entries(table, 1, 100);
  HKSensorColumn column = table.column(2, 100);
  append_entries(table, 101, 200);  // live follow
  EXPECT_EQ(column.size(), 100u);
  EXPECT_EQ(table.column(2, 200)[150], byte_of(151, 2));
  table.reset(kSensors);  // a new file
  append_entries(table, 1, 100, 7);
  for (size_t p = 0; p < 100; ++p) ASSERT_EQ(column[p], byte_of(p + 1, 2)) << p;
  EXPECT_NE(table.at(2, 1), column[0]);
  column.truncate(40);
  EXPECT_EQ(column.size(), 40u);
}

}  // namespace
}  // namespace morvane
