// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/session.h"
#include "export/ds_calibration_export.h"
#include "export/export_output.h"
#include "export/export_progress.h"
#include "export/export_range.h"
#include "decoders/spectrum_table.h"

namespace morvane {

// The four export dialogs.
enum class ExportKind { Housekeeping, Auxiliary, DS_Calibration, Spectra };

// The fixed texts of one export dialog.
struct ExportDialogTexts {
  std::string_view caption;               // the window's caption
  std::string_view range_frame;           // the frame around From, To and All
  std::string_view invalid_range;         // the message of a range that is not valid
  std::string_view format_frame;          // the frame around the data format options
  std::vector<std::string_view> formats;  // the options' captions, Option4 first
  std::string_view sheet_name;            // the workbook's sheet
};
const ExportDialogTexts& export_dialog_texts(ExportKind kind);

// The controls every export dialog shares.
inline constexpr std::string_view kFromCaption = "From";
inline constexpr std::string_view kToCaption = "To";
inline constexpr std::string_view kAllCaption = "All";
inline constexpr std::string_view kDelimiterFrame = "Deliminator";
inline constexpr std::string_view kExportCaption = "Export";
inline constexpr std::string_view kCancelCaption = "Cancel";
// The auxiliary dialog's AD590 temperature entry, and its message when it is not a number.
inline constexpr std::string_view kAD590EntryCaption = "AD590 temperature";
inline constexpr std::string_view kAD590EntryNotValid = "AD590 temperature not valid";

struct DelimiterOption {
  std::string_view caption;
  char character;
};
// Option1 "Tab" (character 9), Option2 "Comma" (44), Option3 "Semicolon" (59).
inline constexpr std::array<DelimiterOption, 3> kDelimiterOptions{{{"Tab", '\t'}, {"Comma", ','}, {"Semicolon", ';'}}};

// The main window's guard before it opens an export dialog: "Please load an EGSE data file"
// while no file is loaded; for the spectra also "The EGSE data file contains no spectra" when
// the catalogue counts neither GC nor whole isotope spectra. Nothing when the dialog may open.
std::optional<std::string> export_guard(const Session& session, ExportKind kind);

// What the Export button hands to the writer once the entries are valid.
struct ExportRequest {
  ExportKind kind = ExportKind::Housekeeping;
  EntryRange range;
  int format = 0;  // the data format option, 0 for Option4
  char delimiter = '\t';
  std::vector<bool> sensors;  // housekeeping: sensor s has a column when sensors[s - 1]
  double ad590_celsius = 0;   // auxiliary, AD590 format: the AD590 temperature entered
};

// One export dialog without its window. The window shows texts() and the state below, passes
// the user's changes in, and on Export calls Command1_Click: a message to show (the range boxes
// or the AD590 entry are then reset), or a request. It then asks for the file; a cancelled
// file dialog ends silently, as does a file open_output cannot create. write() runs the export;
// a RuntimeError it throws is the message to show.
class ExportPresenter {
 public:
  // Form_Load on the loaded file: the range limit of the kind (housekeeping entries, science
  // entries, docking-station calibration entries, or complete plus GC spectra), From "1" and To
  // the limit with All checked, the first data format, Tab, every sensor ticked, and the AD590
  // entry showing the session's AD590 temperature ("0.00"). The docking-station and spectra
  // dialogs find their entries here; an error doing so is the view's RuntimeError.
  ExportPresenter(ExportKind kind, const Session& session);

  ExportKind kind() const { return kind_; }
  const ExportDialogTexts& texts() const { return export_dialog_texts(kind_); }
  ExportRange& range() { return range_; }
  const ExportRange& range() const { return range_; }

  int format = 0;     // the data format option chosen, 0 for Option4
  int delimiter = 0;  // the delimiter option chosen, an index into kDelimiterOptions
  // The housekeeping dialog's check boxes (Check1), one per sensor: captions the sensor names.
  std::vector<std::string> sensor_captions;
  std::vector<bool> sensors;
  // The auxiliary dialog's AD590 temperature entry, degrees C.
  std::string ad590_text;

  // Command1_Click up to the file choice. The range must be valid (else the dialog's message;
  // the boxes show "1" and the limit again); for the auxiliary AD590 format the AD590 entry must
  // be a number (else kAD590EntryNotValid; the entry shows the session's temperature again).
  struct Validation {
    std::optional<ExportRequest> request;
    std::string message;  // when there is no request
  };
  Validation Command1_Click();

  // The output at path of the chosen type for request, or nothing when it cannot be created
  // there (the dialog then ends without a message).
  std::unique_ptr<ExportOutput> open_output(const std::string& path, ExportFileType type,
                                             const ExportRequest& request) const;

  // What a workbook sheet cannot hold shows before anything is written: an export of request to
  // a workbook at path whose lines or cells are known to exceed a sheet's (1048576 rows, 16384
  // columns) is the "Subscript out of range" the sheet would give on its first line too many.
  // The auxiliary export, whose rows depend on each packet's readings, is checked as it writes.
  void check_fits(const std::string& path, ExportFileType type, const ExportRequest& request) const;

  // Writes request into output and completes the file. A cancel (progress returning false) or a
  // RuntimeError keeps the lines written so far under the chosen name; the error is rethrown.
  ExportResult write(Session& session, const ExportRequest& request, ExportOutput& output,
                      const ExportProgress& progress = {}) const;

 private:
  ExportKind kind_;
  std::string ad590_session_text_;
  std::optional<DSCalibrationIndex> ds_index_;
  std::optional<Spectrum_Table> spectra_;
  ExportRange range_;
};

}  // namespace morvane
