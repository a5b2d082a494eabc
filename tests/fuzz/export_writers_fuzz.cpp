// SPDX-License-Identifier: MIT
// Any bytes as a telemetry file through the four export dialogs and the trend table: a random
// dialog, data format, delimiter, sensor ticks, AD590 entry and From/To texts (numbers in and out
// of range, blanks, fractions, words), sometimes cancelled part-way. The lines go to memory as
// the delimited text file would hold them; every line must end in CR LF and be counted.
#include <algorithm>
#include <array>
#include <string>

#include "export/export_presenter.h"
#include "export/export_output.h"
#include "export/trend_export.h"
#include "fuzz_support.h"
#include "decoders/trend_series.h"

using namespace morvane;

namespace {

// The delimited text of an export, in memory.
class MemoryOutput final : public ExportOutput {
 public:
  explicit MemoryOutput(char delimiter) : ExportOutput("memory"), delimiter_(delimiter) {}
  void text(std::string_view text) override { cell(text); }
  using LineSink::number;
  void number(double, std::string_view shown, std::string_view) override { cell(shown); }
  void empty() override { cell({}); }
  void end_line(bool trailing_delimiter) override {
    if (trailing_delimiter && line_started_) content_ += delimiter_;
    content_ += "\r\n";
    line_started_ = false;
    ++lines_;
  }
  // A finished export ended every line it began; after an error or a cancel a line may be open.
  void finish() override { check(!line_started_); }
  void keep_partial() noexcept override { check(true); }

 protected:
  RuntimeError completed(const RuntimeError& error) const override { return error; }

 private:
  void cell(std::string_view shown) {
    if (line_started_) content_ += delimiter_;
    line_started_ = true;
    content_ += shown;
  }
  // Every line ended is counted once.
  void check(bool lines_closed) const {
    if (!lines_closed || std::count(content_.begin(), content_.end(), '\n') != lines_) __builtin_trap();
  }
  char delimiter_;
  bool line_started_ = false;
  std::string content_;
};

// A From or To text: one of the odd ones, a number near the limit or any number up to past it.
std::string range_text(uint8_t pick, uint8_t value, int32_t limit) {
  static const std::array<std::string, 10> odd = {"", " ", "0", "-1", "1.5", "1e2", "abc", "99999999999", "&H10", " 2 "};
  if (pick < 40) return odd[pick % odd.size()];
  if (pick < 80) return std::to_string(limit - pick % 3 + 1);
  return std::to_string((pick << 8 | value) % (limit + 2));
}

void export_trend(const Session& session, fuzz::Choices& in) {
  std::vector<int> sensors;
  for (int k = in.byte() % 4; k >= 0; --k) sensors.push_back(in.byte() % (session.config.Sensor_Count() + 2));
  const bool cold_junction = in.byte() & 1;
  const double from = in.number() * 1000.0, to = from + in.number() * 1000.0;
  fuzz::expect_only_runtime_errors([&] {
    MemoryOutput out('\t');
    write_trend_table(trend_series(session, sensors, cold_junction), from, to, out);
    out.finish();
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::Choices in(data, size);
  const uint8_t setup = in.byte();
  const uint8_t dialog_choice = in.byte();
  const uint8_t sensor_ticks = in.byte();
  const uint8_t cancel_after = in.byte();
  const std::array<uint8_t, 4> range_choices = {in.byte(), in.byte(), in.byte(), in.byte()};
  const std::array<FileFormat, 5> formats = {FileFormat::CSS, FileFormat::QM, FileFormat::GRM, FileFormat::FM,
                                             FileFormat::ZEB};
  // A session of its own: the housekeeping export leaves values in the sensor records.
  Session session;
  session.config = fuzz::configured_session().config;
  session.Byte_Reverse = setup & 1;
  // The range choices need the limit, so the file comes first; a few bytes of it also drive the
  // trend table.
  fuzz::Choices trend(in.rest(), std::min<size_t>(in.rest_size(), 12));
  fuzz::load_input(session, in.rest(), in.rest_size(), formats[(setup >> 1) % formats.size()]);
  if (setup & 0x80) {
    export_trend(session, trend);
    return 0;
  }
  const auto kind = static_cast<ExportKind>(dialog_choice % 4);
  if (export_guard(session, kind)) return 0;
  fuzz::expect_only_runtime_errors([&] {
    ExportPresenter dialog(kind, session);
    dialog.format = (dialog_choice >> 2) % static_cast<int>(dialog.texts().formats.size());
    dialog.delimiter = (dialog_choice >> 4) % static_cast<int>(kDelimiterOptions.size());
    if (dialog_choice & 0x40) {
      dialog.range().Check2_Click(false);
      const int32_t limit = dialog.range().limit();
      dialog.range().set_from_text(range_text(range_choices[0], range_choices[1], limit));
      dialog.range().set_to_text(range_text(range_choices[2], range_choices[3], limit));
    }
    for (size_t s = 0; s < dialog.sensors.size(); ++s) dialog.sensors[s] = (sensor_ticks >> (s % 8)) & 1;
    if (dialog_choice & 0x80) dialog.ad590_text = std::to_string(static_cast<int>(cancel_after) - 128) + ".5";
    ExportPresenter::Validation validation = dialog.Command1_Click();
    if (!validation.request) return;
    // At most a few entries an input: every entry goes through the same writing, and a whole
    // file's worth would cost milliseconds.
    EntryRange& range = validation.request->range;
    range.to = std::min(range.to, range.from + 7);
    MemoryOutput out(validation.request->delimiter);
    int64_t reports = 0;
    const ExportProgress progress = [&](int64_t, int64_t) { return cancel_after == 0 || ++reports < cancel_after; };
    dialog.write(session, *validation.request, out, progress);
  });
  return 0;
}
