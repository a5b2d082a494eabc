// SPDX-License-Identifier: MIT
// spectrum: the spectrum window after it opened on spectrum 1 and moved to spectrum S (and, for a
// complete spectrum, to sub-packet K): counts, title, bins, sub-packet header and axis.
#include <iostream>
#include <memory>

#include "cli_common.h"
#include "commands.h"
#include "core/number_text.h"
#include "decoders/spectrum_presenter.h"

namespace morvane::cli {

namespace {

struct SpectrumOptions {
  FileOptions file;
  int32_t number = 1;
  int sub_packet = 0;  // 0: the first, as the window starts
};

Json number_or_null(const std::optional<SpectrumHeader>& header, int32_t SpectrumHeader::*field) {
  return header ? Json((*header).*field) : Json(nullptr);
}

void print_spectrum_json(const SpectrumPresenter& view) {
  const auto& header = view.header();
  const auto rows = view.header_rows();  // First bin, Number bins, Label28..31, bit 15, bit 14
  Json bins = Json::array();
  // Counts are whole numbers (a mantissa times a power of two): written without a fraction.
  for (const double count : view.bins()) bins.push_back(static_cast<int64_t>(count));
  Json buttons = Json::array();
  for (const SpectrumButton button : kSpectrumButtons) buttons.push_back(view.enabled(button));
  const SpectrumAxis& axis = view.axis();
  const Colour bit15 = rows[6].value.colour, bit14 = rows[7].value.colour;
  print_json(Json{{"complete_count", view.table().complete_count},
                  {"gc_count", view.table().gc_count},
                  {"no_spectra_text", view.has_spectra() ? "" : kNoSpectraText},
                  {"number", view.spectrum()},
                  {"title", view.title()},
                  {"is_complete", view.is_complete()},
                  {"sub_packet_count", view.sub_packet_count()},
                  {"current_sub_packet", view.current_sub_packet()},
                  {"sub_packet_text", view.sub_packet_text()},
                  {"bin_count", view.bin_count()},
                  {"bins", bins},
                  {"header",
                   {{"bit15", rows[6].value.text},
                    {"bit14", rows[7].value.text},
                    {"label28", rows[2].value.text},
                    {"label29", rows[3].value.text},
                    {"label30", rows[4].value.text},
                    {"label31", rows[5].value.text},
                    {"first_bin", number_or_null(header, &SpectrumHeader::first_bin)},
                    {"number_bins", number_or_null(header, &SpectrumHeader::number_bins)},
                    {"bit15_colour", colour_json(bit15.red, bit15.green, bit15.blue)},
                    {"bit14_colour", colour_json(bit14.red, bit14.green, bit14.blue)}}},
                  {"axis",
                   {{"x_start", axis.X_Start},
                    {"x_end", axis.X_End},
                    {"x_zoom", axis.X_Zoom},
                    {"y_max", axis.Y_Max},
                    {"label20", axis.range_text()},
                    {"label21", axis.scale_text()},
                    {"label22", axis.start_text()},
                    {"label23", axis.end_text()}}},
                  {"buttons", buttons}});
}

void print_spectrum_text(const SpectrumPresenter& view) {
  std::ostream& out = std::cout;
  out << kCompleteCountCaption << ' ' << view.complete_count_text() << '\n'
      << kGcCountCaption << ' ' << view.gc_count_text() << '\n';
  if (!view.has_spectra()) {
    out << kNoSpectraText << '\n';
    return;
  }
  out << view.title() << '\n';
  if (view.sub_packet_shown()) out << view.sub_packet_text() << '\n';
  for (const auto& row : view.header_rows()) out << "  " << left_in(row.heading, 22) << row.value.text << '\n';
  const SpectrumAxis& axis = view.axis();
  out << kXRangeCaption << ' ' << axis.range_text() << "   " << kYScaleCaption << ' ' << axis.scale_text() << "   "
      << kXPositionCaption << ' ' << kMinimumCaption << ' ' << axis.start_text() << ' ' << kMaximumCaption << ' '
      << axis.end_text() << '\n'
      << "Bins read: " << view.bin_count() << '\n';
  for (int b = 0; b <= kLastBin; b += 8) {
    out << right_in(b, 4) << ':';
    for (int i = b; i < b + 8 && i <= kLastBin; ++i)
      out << ' ' << right_in(general_text(view.bins()[static_cast<size_t>(i)]), 10);
    out << '\n';
  }
}

}  // namespace

void add_spectrum_command(CLI::App& app) {
  auto options = std::make_shared<SpectrumOptions>();
  CLI::App* command = app.add_subcommand("spectrum", "One spectrum as the spectrum window shows it");
  add_file_options(command, options->file);
  command->add_option("--number", options->number, "Spectrum number: complete spectra first, then GC spectra");
  command->add_option("--sub-packet", options->sub_packet, "Sub-packet whose header is shown (complete spectra)");
  command->callback([options] {
    // The spectra need no configuration.
    const Session session = open_session(options->file, false);
    SpectrumPresenter view;
    view.open(session);
    const int32_t count = view.scroll_maximum();
    if (count == 0 && options->number == 1 && options->sub_packet == 0) {
      // Nothing to move to: the window's "No Spectra Acquired" state.
    } else if (options->number < 1 || options->number > count) {
      throw CommandError("--number " + std::to_string(options->number) + " is outside the spectra (1.." +
                         std::to_string(count) + ")");
    } else {
      if (options->number != view.spectrum()) view.show_spectrum(session, options->number);
      if (options->sub_packet != 0) {
        if (!view.is_complete()) throw CommandError("a GC spectrum has no sub-packets to choose");
        if (options->sub_packet < 1 || options->sub_packet > view.sub_packet_count()) {
          throw CommandError("--sub-packet " + std::to_string(options->sub_packet) + " is outside 1.." +
                             std::to_string(view.sub_packet_count()));
        }
        view.show_sub_packet(session, options->sub_packet);
      }
    }
    if (options->file.json) {
      print_spectrum_json(view);
    } else {
      print_spectrum_text(view);
    }
  });
}

}  // namespace morvane::cli
