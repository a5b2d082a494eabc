// SPDX-License-Identifier: MIT
// What the archive answers equals what the single-file decoders give for each file, in all five
// formats.
#include <gtest/gtest.h>

#include "archive_fixture.h"
#include "core/error.h"
#include "functest/short_message_load.h"
#include "functest/short_test_evaluation.h"
#include "decoders/information_presenter.h"
#include "decoders/trend_series.h"

namespace morvane {
namespace {

using testing::ArchiveTest;
using testing::campaign;
using testing::kAllFormats;

class ArchiveValues : public ArchiveTest {};

TEST_P(ArchiveValues, FilesHoldTheirCountsAndTimeSpanAndTrendsEqualTheSingleFileTrendsWithAndWithoutColdJunction) {
  ingest_all();
  const auto files = open()->files();
  ASSERT_EQ(files.size(), 5u);
  for (size_t i = 0; i < files.size(); ++i) {
    const FileFormat format = kAllFormats[i];
    const Session session = campaign().session(format);
    const auto& file = files[i];
    SCOPED_TRACE(file.name);
    EXPECT_EQ(file.file_id, static_cast<int64_t>(i + 1));
    EXPECT_EQ(file.type, format_tag(format));
    EXPECT_EQ(file.path, campaign().files.at(format));
    EXPECT_EQ(file.frames, session.Packet_Count);
    EXPECT_EQ(file.hk_count, session.catalogue.HK_Count());
    EXPECT_EQ(file.science_count, session.catalogue.Science_Count());
    EXPECT_EQ(file.information_count, session.catalogue.Information_Count());
    EXPECT_EQ(file.size, static_cast<int64_t>(testing::read_file(file.path).size()));
    EXPECT_EQ(file.first_lander_time, sim::kFirstLanderTime);
    EXPECT_GT(*file.last_lander_time, sim::kFirstLanderTime);
  }

  for (const bool cold_junction : {true, false}) {
    archive::TrendQuery query;
    query.cold_junction = cold_junction;
    const auto trends = open()->trend(query);
    ASSERT_EQ(trends.size(), static_cast<size_t>(campaign().config.Sensor_Count()));
    for (size_t i = 0; i < std::size(kAllFormats); ++i) {
      const Session session = campaign().session(kAllFormats[i]);
      std::vector<int> all;
      for (int s = 1; s <= session.config.Sensor_Count(); ++s) all.push_back(s);
      const auto expected = trend_series(session, all, cold_junction);
      for (size_t s = 0; s < expected.size(); ++s) {
        std::vector<std::pair<int32_t, double>> points;
        for (const auto& point : trends[s].points) {
          if (point.file_id == static_cast<int64_t>(i + 1)) points.emplace_back(point.lander_time, point.value);
        }
        ASSERT_EQ(points, expected[s].points()) << format_tag(kAllFormats[i]) << " sensor " << s + 1;
        EXPECT_EQ(trends[s].name, expected[s].name);
        EXPECT_EQ(trends[s].unit, expected[s].unit);
      }
    }
  }

  // From and to keep only the points between them.
  const archive::TrendQuery query{.sensors = {1}, .from = sim::kFirstLanderTime + 1000, .to = sim::kFirstLanderTime + 2000};
  const auto points = open()->trend(query).at(0).points;
  for (const auto& point : points) {
    EXPECT_GE(point.lander_time, *query.from);
    EXPECT_LE(point.lander_time, *query.to);
  }
  const auto all = trend_series(campaign().session(FileFormat::CSS), {1}, true).at(0).points();
  const auto inside = [&](int32_t time) { return time >= *query.from && time <= *query.to; };
  const auto css_inside = std::count_if(points.begin(), points.end(), [&](const auto& p) { return p.file_id == 1; });
  EXPECT_GT(css_inside, 0);
  EXPECT_EQ(css_inside, std::count_if(all.begin(), all.end(), [&](const auto& p) { return inside(p.first); }));
}

TEST_P(ArchiveValues, TestsOfBothModesEqualTheSingleFileEvaluationAndTheQueriesAndItemHistorySelectFromThem) {
  ingest_all();
  const auto tests = open()->tests();
  size_t next = 0;
  for (size_t i = 0; i < std::size(kAllFormats); ++i) {
    Session session = campaign().session(kAllFormats[i]);
    for (const char* mode : {"cruise", "eaft"}) {
      session.Test_Mode = std::string(mode) == "eaft" ? "EAFT" : "Cruise Phase";
      const ShortTestList list = find_short_tests(session);
      for (int32_t line = 1; line <= list.Test_Count(); ++line, ++next) {
        ASSERT_LT(next, tests.size());
        const auto& test = tests[next];
        SCOPED_TRACE(std::string(format_tag(kAllFormats[i])) + " " + mode + " " + std::to_string(line));
        EXPECT_EQ(test.file_id, static_cast<int64_t>(i + 1));
        EXPECT_EQ(test.mode, mode);
        EXPECT_EQ(test.number, line);
        session.Current_Science_Index = science_index_of_line(list, line);
        const ShortTestEvaluation expected = open_short_test(session);
        const Packet_Entry& start = session.catalogue.Science_List.at(session.Current_Science_Index);
        EXPECT_EQ(test.sequence_count, start.Sequence_Count);
        EXPECT_EQ(test.lander_time, start.Lander_Time);
        EXPECT_EQ(test.overall, expected.overall.text);
        EXPECT_EQ(test.packet_message, expected.packet_message.text);
        EXPECT_EQ(test.rf_frequency_text, expected.rf_frequency_text());
        ASSERT_FALSE(test.items.empty());
        std::map<std::string, std::pair<std::string, std::string>> valves;
        for (const auto& item : test.items) {
          if (item.table == "valves") valves[item.name] = {item.value, item.result};
        }
        ASSERT_EQ(valves.size(), expected.valves.size());
        for (const ItemRow& row : expected.valves) {
          EXPECT_EQ(valves[row.name], std::make_pair(row.rise_28v.text, row.result.text)) << row.name;
        }
      }
    }
  }
  EXPECT_EQ(next, tests.size());
  EXPECT_GT(next, 0u);

  archive::TestQuery failed;
  failed.failed_only = true;
  const auto failed_tests = open()->tests(failed);
  for (const auto& test : failed_tests) EXPECT_NE(test.overall, "Passed");
  EXPECT_LT(failed_tests.size(), tests.size());
  archive::TestQuery eaft;
  eaft.mode = "eaft";
  const auto eaft_tests = open()->tests(eaft);
  for (const auto& test : eaft_tests) EXPECT_EQ(test.mode, "eaft");
  EXPECT_EQ(std::count_if(tests.begin(), tests.end(), [](const auto& t) { return t.mode == "eaft"; }),
            static_cast<long>(eaft_tests.size()));

  // An item's history follows it through every test of a mode.
  archive::TestQuery cruise;
  cruise.mode = "cruise";
  const auto cruise_tests = open()->tests(cruise);
  const auto history = open()->item_history("cruise", "V 7");
  ASSERT_EQ(history.size(), cruise_tests.size());
  for (size_t i = 0; i < history.size(); ++i) {
    EXPECT_EQ(history[i].file_id, cruise_tests[i].file_id);
    EXPECT_EQ(history[i].test_number, cruise_tests[i].number);
    EXPECT_EQ(history[i].item.table, "valves");
    const auto& items = cruise_tests[i].items;
    const auto found = std::find_if(items.begin(), items.end(), [](const auto& item) { return item.name == "V 7"; });
    ASSERT_NE(found, items.end());
    EXPECT_EQ(history[i].item.value, found->value);
    EXPECT_EQ(history[i].item.result, found->result);
  }
  EXPECT_THROW(open()->item_history("neither", "V 7"), RuntimeError);
}

TEST_P(ArchiveValues, EventsHoldTheTranslationLinesOfEveryInformationEntryAndASearchFindsTextWhateverItsCase) {
  ingest_each({FileFormat::CSS, FileFormat::ZEB});
  const auto archive = open();
  const auto events = archive->events();
  Session css = campaign().session(FileFormat::CSS);
  const Session zeb = campaign().session(FileFormat::ZEB);
  ASSERT_EQ(events.size(),
            static_cast<size_t>(css.catalogue.Information_Count() + zeb.catalogue.Information_Count()));
  for (int32_t i = 1; i <= css.catalogue.Information_Count(); ++i) {
    InformationPresenter view;
    view.show(css, i);
    const auto& event = events[static_cast<size_t>(i - 1)];
    ASSERT_EQ(event.index, i);
    EXPECT_EQ(event.label, label_text(css.catalogue.Information_List[i].Label));
    for (size_t l = 0; l < 5; ++l) EXPECT_EQ(event.lines.at(l), view.translation()[l].text) << i;
  }
  // ZEB records are never translated.
  for (size_t e = static_cast<size_t>(css.catalogue.Information_Count()); e < events.size(); ++e) {
    EXPECT_EQ(events[e].file_id, 2);
    EXPECT_EQ(events[e].lines, std::vector<std::string>(5));
  }
  archive::EventQuery query;
  query.contains = "anomalous EVENT";
  const auto warnings = archive->events(query);
  ASSERT_FALSE(warnings.empty());
  for (const auto& event : warnings) EXPECT_EQ(event.label, " Warning Anomalous Event ");
  query.contains = "100%_";
  EXPECT_TRUE(archive->events(query).empty());
}

INSTANTIATE_TEST_SUITE_P(Backends, ArchiveValues, ::testing::ValuesIn(testing::archive_backends()),
                         testing::backend_name);

}  // namespace
}  // namespace morvane
