// SPDX-License-Identifier: MIT
#include "export/export_presenter.h"

#include "core/error.h"
#include "core/free_format_reader.h"
#include "export/auxiliary_export.h"
#include "export/housekeeping_export.h"
#include "export/spectra_export.h"
#include "decoders/auxiliary_presenter.h"

namespace morvane {

namespace {

const ExportDialogTexts kTexts[] = {
    {"Export housekeeping data to excel",
     "HK Packets",
     "Housekeeping packet ranges not valid",
     "Data Format",
     {"Raw Data", "Calibrated Data         (no AD590 correction)", "Calibrated Data         (with AD590 correction)"},
     "Housekeeping"},
    {"Export Auxiliary data to excel",
     "Aux Packets",
     "Science packet ranges not valid",
     "Data Format",
     {"ADC Values", "Sensor Voltages", "Calibrated Data         (no AD590 correction)",
      "Calibrated Data         (with AD590 correction)"},
     "Auxiliary"},
    {"Export docking station calibration data to excel",
     "DS Calibration",
     "DS calibration ranges not valid",
     "Data format",
     {"Distance (mm)", "ADC Values", "Sensor Voltages"},
     "DS Calibration"},
    {"Export spectra to excel",
     "Spectra",
     "Science packet ranges not valid",
     "Data format",
     {"Raw Data ", "Data proceesed for excel graphs"},
     "Spectra"},
};

// The lines and the widest line of an export, where they follow from the request alone.
struct ExportShape {
  int64_t lines = 0;
  int64_t cells = 0;
};

std::optional<ExportShape> export_shape(ExportKind kind, const ExportRequest& request) {
  const int64_t entries = request.range.size();
  switch (kind) {
    case ExportKind::Housekeeping: {
      int64_t ticked = 0;
      for (const bool sensor : request.sensors) ticked += sensor ? 1 : 0;
      return ExportShape{4 + entries, 2 + ticked};  // four heading lines, a line an entry
    }
    case ExportKind::DS_Calibration: return ExportShape{5 + entries, 2};
    case ExportKind::Spectra: return ExportShape{5 + kLastBin + 1, 1 + entries};  // a column a spectrum
    case ExportKind::Auxiliary: return std::nullopt;
  }
  return std::nullopt;
}

int32_t range_limit(ExportKind kind, const Session& session, const std::optional<DSCalibrationIndex>& ds_index,
                    const std::optional<Spectrum_Table>& spectra) {
  switch (kind) {
    case ExportKind::Housekeeping: return session.catalogue.HK_Count();
    case ExportKind::Auxiliary: return session.catalogue.Science_Count();
    case ExportKind::DS_Calibration: return ds_index->count();
    case ExportKind::Spectra: return spectra->spectrum_count();
  }
  return 0;
}

}  // namespace

const ExportDialogTexts& export_dialog_texts(ExportKind kind) { return kTexts[static_cast<size_t>(kind)]; }

std::optional<std::string> export_guard(const Session& session, ExportKind kind) {
  if (session.File_Name.empty()) return "Please load an EGSE data file";
  const CatalogueCounters& counters = session.catalogue.counters;
  if (kind == ExportKind::Spectra && counters.GC_Spectrum_Count() + counters.Isotope_Spectrum_Count() < 1) {
    return "The EGSE data file contains no spectra";
  }
  return std::nullopt;
}

ExportPresenter::ExportPresenter(ExportKind kind, const Session& session)
    : kind_(kind),
      ad590_session_text_(ad590_temperature_text(session.config)),
      ds_index_(kind == ExportKind::DS_Calibration ? std::optional<DSCalibrationIndex>(std::in_place, session)
                                                    : std::nullopt),
      spectra_(kind == ExportKind::Spectra ? std::optional<Spectrum_Table>(build_spectrum_table(session.catalogue))
                                            : std::nullopt),
      range_(range_limit(kind, session, ds_index_, spectra_)) {
  if (kind == ExportKind::Housekeeping) {
    for (const SensorRecord& record : session.config.Sensor_Table) sensor_captions.push_back(record.Sensor_Name);
    sensors.assign(sensor_captions.size(), true);
  }
  ad590_text = ad590_session_text_;
}

ExportPresenter::Validation ExportPresenter::Command1_Click() {
  Validation validation;
  const std::optional<EntryRange> range = range_.validate();
  if (!range) {
    validation.message = texts().invalid_range;
    return validation;
  }
  ExportRequest request;
  request.kind = kind_;
  request.range = *range;
  request.format = format;
  request.delimiter = kDelimiterOptions[static_cast<size_t>(delimiter)].character;
  request.sensors = sensors;
  if (kind_ == ExportKind::Auxiliary && format == static_cast<int>(AuxFormat::Calibrated_AD590)) {
    double celsius = 0;
    if (!parse_number(ad590_text, celsius)) {
      ad590_text = ad590_session_text_;
      validation.message = kAD590EntryNotValid;
      return validation;
    }
    request.ad590_celsius = celsius;
  }
  validation.request = std::move(request);
  return validation;
}

std::unique_ptr<ExportOutput> ExportPresenter::open_output(const std::string& path, ExportFileType type,
                                                          const ExportRequest& request) const {
  try {
    return open_export_output(path, type, request.delimiter, texts().sheet_name);
  } catch (const RuntimeError&) {
    return nullptr;
  }
}

void ExportPresenter::check_fits(const std::string& path, ExportFileType type, const ExportRequest& request) const {
  constexpr int64_t kSheetRows = 1048576;
  constexpr int64_t kSheetColumns = 16384;
  if (type != ExportFileType::Workbook) return;
  const std::optional<ExportShape> shape = export_shape(kind_, request);
  if (!shape) return;
  if (shape->lines > kSheetRows) {
    raise(ErrorNumber::SubscriptOutOfRange, path + ": an .xlsx sheet holds at most 1048576 rows");
  }
  if (shape->cells > kSheetColumns) {
    raise(ErrorNumber::SubscriptOutOfRange, path + ": an .xlsx sheet holds at most 16384 columns");
  }
}

ExportResult ExportPresenter::write(Session& session, const ExportRequest& request, ExportOutput& output,
                                   const ExportProgress& progress) const {
  ExportResult result;
  try {
    switch (kind_) {
      case ExportKind::Housekeeping:
        result = write_housekeeping(session, {request.range, static_cast<HKFormat>(request.format), request.sensors},
                                    output, progress);
        break;
      case ExportKind::Auxiliary:
        // The temperature counts as the AD590 dialog sets it, as its N-type voltage; for this
        // export only, the session's setting stays.
        result = write_auxiliary(session,
                                 {request.range, static_cast<AuxFormat>(request.format),
                                  session.config.NType.NType_Reverse_Lookup(request.ad590_celsius)},
                                 output, progress);
        break;
      case ExportKind::DS_Calibration:
        result = write_ds_calibration(session, *ds_index_, {request.range, static_cast<DSFormat>(request.format)},
                                      output, progress);
        break;
      case ExportKind::Spectra:
        result = write_spectra(session, *spectra_, {request.range, static_cast<SpectraFormat>(request.format)}, output,
                               progress);
        break;
    }
  } catch (...) {
    output.abandon();
  }
  if (result.cancelled) {
    output.keep_partial();
  } else {
    output.finish();
  }
  return result;
}

}  // namespace morvane
