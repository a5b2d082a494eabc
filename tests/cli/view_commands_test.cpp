// SPDX-License-Identifier: MIT
// The view commands (hk, aux, info, spectrum, trend, integrity): each prints under its keys what
// its decoder returns, ends with the right status, and shows the view's own texts. The decoders'
// tests hold the detail of what they return.
#include <gtest/gtest.h>

#include "cli_fixture.h"
#include "sim/telemetry_writer.h"
#include "views/auxiliary_view.h"
#include "views/housekeeping_view.h"
#include "views/information_view.h"
#include "views/integrity.h"
#include "views/spectrum_view.h"
#include "views/trend_series.h"

namespace morvane {
namespace {

using testing::aux_packet;
using testing::contains;
using testing::hk_packet;
using testing::information_packet;
using testing::json;
using testing::one_a_frame;
using testing::Sub_Packet;

class ViewCommands : public testing::CliTest {
 protected:
  // Each key is in the object.
  static void expect_keys(const json& object, std::initializer_list<const char*> keys) {
    for (const char* key : keys) EXPECT_TRUE(object.contains(key)) << key << " in " << object.dump().substr(0, 200);
  }
  // The command fails with exit status 1 and an error line starting with start.
  void expect_error(const std::string& command, const std::vector<std::string>& arguments, const std::string& start) {
    const testing::ProgramRun run = cli(command, arguments);
    EXPECT_EQ(run.status, 1) << command;
    EXPECT_EQ(run.err.rfind("error: " + start, 0), 0u) << run.err;
  }
};

// A complete housekeeping packet in mode 3 on line 9 with the valve register 8001.
TEST_F(ViewCommands, HkPrintsTheSensorPageAndRegistersOfTheDecoder) {
  write_frames(one_a_frame({hk_packet(2, {{18, 3}, {20, 0}, {21, 9}, {22, 0x80}, {49, 153}}, {{66, 0x8001}}, 7, 1000),
                            hk_packet(1, {{18, 4}, {20, 128}})}));
  const json j = cli_json("hk", {"--index", "1", "--registers"});
  expect_keys(j, {"index", "hk_count", "label", "sequence_count", "lander_time", "mode_number", "mode_name",
                  "line_number", "cold_junction_term", "more_visible", "header", "sensors", "lines", "registers"});
  EXPECT_EQ(j["hk_count"], 2);
  EXPECT_EQ(j["label"], " Complete ");
  EXPECT_EQ(j["sequence_count"], 7);
  EXPECT_EQ(j["lander_time"], 1000);

  Session decoded = session();
  HousekeepingState state;
  const Sensor_Page page = state.VScroll1_Change(decoded, 1);
  EXPECT_EQ(j["mode_number"], state.Mode_Number);
  EXPECT_EQ(j["mode_name"], "Cruise Phase");
  EXPECT_EQ(j["line_number"], 9);
  EXPECT_EQ(j["more_visible"], true);
  EXPECT_DOUBLE_EQ(j["cold_junction_term"].get<double>(), page.Cold_Junction_Term);
  EXPECT_EQ(j["header"]["mode"], page.header.mode);

  ASSERT_EQ(j["sensors"].size(), static_cast<size_t>(decoded.config.Sensor_Count()));
  expect_keys(j["sensors"][0], {"number", "name", "raw", "voltage", "voltage_upper", "value", "value_upper", "unit"});
  EXPECT_EQ(j["sensors"][0]["raw"], decoded.config.sensor(1).Raw_Reading);
  EXPECT_EQ(j["sensors"][21]["voltage"], decoded.config.sensor(22).Voltage);  // a pressure's overwritten voltage
  ASSERT_EQ(j["lines"].size(), page.lines.size());
  for (size_t i = 0; i < page.lines.size(); ++i) {
    const Sensor_Line& line = page.lines[i];
    EXPECT_EQ(j["lines"][i], (json{{"row", line.row}, {"column", line.column}, {"sensor", line.sensor},
                                   {"name", line.name}, {"value_text", line.value_text}, {"step_text", line.step_text},
                                   {"unit", line.unit}, {"group", line.group}}))
        << "line " << i;
  }

  const auto registers = std::get<Register_Page>(state.Command1_Click(decoded));
  EXPECT_EQ(j["registers"]["words"][1], 0x8001);
  testing::expect_texts(j["registers"]["texts"], registers.drawing, /*with_colour=*/false);

  const testing::ProgramRun text = cli("hk", {"--index", "1"});
  ASSERT_EQ(text.status, 0) << text.err;
  for (const char* shown :
       {"Packet type -  Complete \n", "Mode  3  -  Cruise Phase\n", "Line  9\n", "Reactors\n", "AD590 Temp"}) {
    EXPECT_PRED2(contains, text.out, shown);
  }
  EXPECT_FALSE(contains(text.out, "Valve enable register"));
}

TEST_F(ViewCommands, HkShowsThePageBeforeItsErrorAndRefusesWhatTheViewCannotShow) {
  write_frames(one_a_frame({hk_packet(2), hk_packet(1, {{18, 4}, {20, 128}})}));
  const testing::ProgramRun overflow = cli("hk", {"--index", "2", "--json"});
  EXPECT_EQ(overflow.status, 1);
  EXPECT_EQ(overflow.err.rfind("error: Overflow", 0), 0u) << overflow.err;
  const json j = json::parse(overflow.out);
  EXPECT_EQ(j["more_visible"], false);
  EXPECT_EQ(j["mode_name"], "");  // a fresh view: nothing read yet
  EXPECT_PRED2(contains, j["mode_error"].get<std::string>(), "Overflow");

  expect_error("hk", {"--index", "3"}, "--index 3");
  const testing::ProgramRun concise = cli("hk", {"--index", "2", "--registers"});
  EXPECT_EQ(concise.status, 1);
  EXPECT_PRED2(contains, concise.err, "complete");
  EXPECT_EQ(cli("hk").status, 2);  // no --index
}

TEST_F(ViewCommands, AuxPrintsTheReadingsOfTheDecoderWithTheAd590SetAsTheDialogSetsIt) {
  write_frames(one_a_frame({aux_packet({{0, 2001, 101, 0}, {0, 2002, 23, 0x2000}}, 12, 2000)}));
  const json j = cli_json("aux", {"--index", "1", "--ad590", "25"});
  expect_keys(j, {"aux_number", "auxiliary_count", "sequence_count", "lander_time", "channel_count", "ad590_text",
                  "readings"});
  EXPECT_EQ(j["aux_number"], 1);
  EXPECT_EQ(j["auxiliary_count"], 1);
  EXPECT_EQ(j["sequence_count"], 12);
  EXPECT_EQ(j["lander_time"], 2000);
  EXPECT_EQ(j["channel_count"], 2);
  EXPECT_EQ(j["ad590_text"], "25.00");

  Session decoded = session();
  decoded.config.AD590_EMF = decoded.config.NType.NType_Reverse_Lookup(25);
  AuxiliaryState state;
  state.Form_Load(decoded);
  const Aux_Page page = state.VScroll1_Change(decoded, 1);
  ASSERT_EQ(j["readings"].size(), page.table.rows.size());
  for (size_t i = 0; i < page.table.rows.size(); ++i) {
    const Aux_Row& row = page.table.rows[i];
    const json& printed = j["readings"][i];
    expect_keys(printed, {"sensor", "name", "channel_id", "word", "time", "adc_voltage_text", "value_text", "unit"});
    EXPECT_EQ(printed["sensor"], row.sensor);
    EXPECT_EQ(printed["name"], row.name);
    EXPECT_EQ(printed["channel_id"], row.channel_id);
    EXPECT_EQ(printed["word"], row.word);
    EXPECT_EQ(printed["time"], row.time);
    EXPECT_EQ(printed["adc_voltage_text"], row.adc_voltage_text);
    EXPECT_EQ(printed["value_text"], row.value_text);
    EXPECT_EQ(printed["unit"], row.unit);
  }
  EXPECT_EQ(j["readings"][0]["value_text"], "25.00");  // reactor 1 reading 0 V shows the junction

  const testing::ProgramRun text = cli("aux", {"--index", "1", "--ad590", "25"});
  ASSERT_EQ(text.status, 0) << text.err;
  for (const char* shown : {"Aux Data number  1\n", "Number of Auxiliary Data Packets  1\n",
                            "AD590 compensation temperature  25.00\n", "Reactor 1"}) {
    EXPECT_PRED2(contains, text.out, shown);
  }

  EXPECT_EQ(cli_json("aux", {"--index", "1", "--ad590", "-20"})["ad590_text"], "-20.00");
  EXPECT_EQ(cli("aux", {"--index", "1", "--ad590", "abc"}).status, 2);
  expect_error("aux", {"--index", "2"}, "--index 2");
}

TEST_F(ViewCommands, AuxShowsTheRowsBeforeAReadingOfNoSensorThenFails) {
  write_frames(one_a_frame({aux_packet({{0, 2001, 101, 0}, {0, 2002, 999, 0}}, 12, 2000)}));
  const testing::ProgramRun run = cli("aux", {"--index", "1", "--json"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err.rfind("error: Subscript out of range", 0), 0u) << run.err;
  const json j = json::parse(run.out);
  ASSERT_EQ(j["readings"].size(), 1u);
  EXPECT_EQ(j["readings"][0]["name"], "Reactor 1");
  EXPECT_PRED2(contains, j["table_error"].get<std::string>(), "channel ID 999");

  write_frames(one_a_frame({hk_packet(2)}));
  const testing::ProgramRun none = cli("aux", {"--index", "1"});
  EXPECT_EQ(none.status, 1);
  EXPECT_PRED2(contains, none.err, "no auxiliary data packets");
}

TEST_F(ViewCommands, InfoPrintsTheLabelsWordsTranslationAndMemoryOfTheView) {
  // A safe-limit event on the AD590 temperature, then a memory checksum report.
  write_frames(one_a_frame(
      {information_packet(testing::kEventId, 2, {{9, 55007}, {10, 28}, {11, 0x4000}, {12, 0x2000}, {13, 0x1000}}),
       information_packet(testing::kEventId, 10, {{9, 0x9601}, {10, 1}, {11, 2}, {12, 3}, {13, 4}})}));
  Session decoded = session();
  Information_View view;
  for (const int index : {1, 3}) {  // entry 2 is the empty slot after the first packet
    SCOPED_TRACE(index);
    const json j = cli_json("info", {"--index", std::to_string(index)});
    view.show(decoded, index);
    const Information_Labels& labels = view.labels();
    EXPECT_EQ(j["index"], index);
    EXPECT_EQ(j["label2"], labels.Label2);
    EXPECT_EQ(j["label3"], labels.Label3);
    EXPECT_EQ(j["label5"], labels.Label5);
    EXPECT_EQ(j["label7"], labels.Label7);
    EXPECT_EQ(j["label9"], labels.Label9);
    ASSERT_EQ(j["words"].size(), view.raw_dump().size());
    for (size_t i = 0; i < view.raw_dump().size(); ++i) EXPECT_EQ(j["words"][i], view.raw_dump()[i].text) << i;
    ASSERT_EQ(j["translation"].size(), view.translation().size());
    for (size_t i = 0; i < view.translation().size(); ++i) {
      const auto& line = view.translation()[i];
      EXPECT_EQ(j["translation"][i], (json{{"text", line.text}, {"colour", testing::colour_json(line.colour)}})) << i;
    }
    testing::expect_texts(j["memory"], view.memory());
  }
  EXPECT_EQ(cli_json("info", {"--index", "1"})["label5"], " Warning Anomalous Event ");

  const testing::ProgramRun text = cli("info", {"--index", "1"});
  ASSERT_EQ(text.status, 0) << text.err;
  EXPECT_PRED2(contains, text.out, "Minimum safe limit 1000(hex)  -   -148.000 oC");
  expect_error("info", {"--index", "99"}, "--index 99");
}

TEST_F(ViewCommands, SpectrumPrintsTheWindowAfterItMovedToTheSpectrumAsked) {
  write_frames(one_a_frame({testing::isotope_packet(Sub_Packet{2, 0, {0x0100, 0x0013}, 0x8000, {5, 0, 0, 0}}),
                            testing::isotope_packet(Sub_Packet{0, 2, {0x0010}, 0x4000}),
                            testing::gc_packet(Sub_Packet{0, 0, {0x0FF0}})}));
  const Session decoded = session();
  const std::tuple<std::vector<std::string>, int32_t, int> cases[] = {{{}, 1, 0}, {{"--sub-packet", "2"}, 1, 2},
                                                                      {{"--number", "2"}, 2, 0}};
  for (const auto& [arguments, number, sub_packet] : cases) {
    SCOPED_TRACE(number * 10 + sub_packet);
    const json j = cli_json("spectrum", arguments);
    Spectrum_View view;
    view.open(decoded);
    if (number != 1) view.show_spectrum(decoded, number);
    if (sub_packet != 0) view.show_sub_packet(decoded, sub_packet);
    expect_keys(j, {"complete_count", "gc_count", "title", "is_complete", "sub_packet_count", "sub_packet_text",
                    "bin_count", "bins", "header", "axis", "buttons"});
    expect_keys(j["header"],
                {"bit15", "bit14", "label28", "label29", "label30", "label31", "first_bin", "number_bins"});
    EXPECT_EQ(j["complete_count"], 1);
    EXPECT_EQ(j["gc_count"], 1);
    EXPECT_EQ(j["title"], view.title());
    EXPECT_EQ(j["is_complete"], view.is_complete());
    EXPECT_EQ(j["sub_packet_text"], view.sub_packet_text());
    EXPECT_EQ(j["bin_count"], view.bin_count());
    ASSERT_EQ(j["bins"].size(), view.bins().size());
    for (size_t b = 0; b < 3; ++b) EXPECT_EQ(j["bins"][b].get<double>(), view.bins()[b]) << b;
    const auto rows = view.header_rows();
    EXPECT_EQ(j["header"]["bit15"], rows[6].value.text);
    EXPECT_EQ(j["header"]["bit14"], rows[7].value.text);
    EXPECT_EQ(j["header"]["label28"], rows[2].value.text);
    EXPECT_EQ(j["header"]["first_bin"], view.header()->first_bin);
    EXPECT_EQ(j["header"]["number_bins"], view.header()->number_bins);
    EXPECT_EQ(j["axis"]["label20"], view.axis().range_text());
  }
  EXPECT_EQ(cli_json("spectrum", {"--sub-packet", "2"})["sub_packet_text"], "Sub-packet 2 viewed of 2");
  expect_error("spectrum", {"--number", "2", "--sub-packet", "1"}, "a GC spectrum");
  expect_error("spectrum", {"--number", "3"}, "--number 3");

  write_frames(one_a_frame({hk_packet(2)}));
  const json empty = cli_json("spectrum");
  EXPECT_EQ(empty["no_spectra_text"], "No Spectra Acquired");
  EXPECT_EQ(empty["bins"].size(), 1025u);
  EXPECT_PRED2(contains, cli("spectrum").out, "No Spectra Acquired");
}

TEST_F(ViewCommands, TrendAndIntegrityPrintWhatTheirDecodersFindInTheSimulatedFile) {
  sim::write_telemetry(file, sim::Telemetry_Options{});
  const Session decoded = session();

  const json trend = cli_json("trend", {"--sensors", "1,28"});
  const auto series = trend_series(decoded, {1, 28}, true);
  ASSERT_EQ(trend["sensors"].size(), 2u);
  for (size_t s = 0; s < 2; ++s) {
    const json& printed = trend["sensors"][s];
    EXPECT_EQ(printed["number"], series[s].number);
    EXPECT_EQ(printed["name"], series[s].name);
    EXPECT_EQ(printed["unit"], series[s].unit);
    ASSERT_EQ(printed["points"].size(), series[s].points.size());
    EXPECT_EQ(printed["points"][0][0], series[s].points[0].first);
    EXPECT_DOUBLE_EQ(printed["points"][0][1].get<double>(), series[s].points[0].second);
  }
  EXPECT_EQ(trend["sensors"][0]["name"], "Reactor 1");
  EXPECT_EQ(trend["sensors"][0]["points"].size(), static_cast<size_t>(decoded.catalogue.HK_Count()));
  const json cold = cli_json("trend", {"--sensors", "1", "--cold-junction", "off"});
  EXPECT_DOUBLE_EQ(cold["sensors"][0]["points"][0][1].get<double>(),
                   trend_series(decoded, {1}, false)[0].points[0].second);
  EXPECT_NE(cold["sensors"][0]["points"][0][1], trend["sensors"][0]["points"][0][1]);
  EXPECT_EQ(cli("trend", {"--sensors", "99"}).status, 1);
  const std::string columns = "Lander time\t" + series[0].name + " (" + series[0].unit + ")\t" + series[1].name + " (" +
                              series[1].unit + ")\n";
  EXPECT_EQ(cli("trend", {"--sensors", "1,28"}).out.rfind(columns, 0), 0u);

  const json integrity = cli_json("integrity");
  const Integrity_Report report = check_integrity(decoded);
  ASSERT_FALSE(report.findings.empty());  // the simulated link loses a few packets
  ASSERT_EQ(integrity["findings"].size(), report.findings.size());
  for (size_t i = 0; i < report.findings.size(); ++i) {
    const Finding& f = report.findings[i];
    EXPECT_EQ(integrity["findings"][i], (json{{"kind", finding_kind_name(f.kind)},
                                              {"list", catalogue_list_name(f.list)},
                                              {"index", f.index},
                                              {"text", f.text}}))
        << i;
  }
  EXPECT_EQ(integrity["counts"].size(), static_cast<size_t>(kFindingKinds));
  EXPECT_GT(integrity["counts"]["sequence_gap"].get<int>(), 0);
  const Finding& first = report.findings[0];
  EXPECT_PRED2(contains, cli("integrity").out,
               std::string(catalogue_list_name(first.list)) + ' ' + std::to_string(first.index) + ": " + first.text);
}

}  // namespace
}  // namespace morvane
