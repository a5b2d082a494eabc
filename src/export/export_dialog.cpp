// SPDX-License-Identifier: MIT
#include "export/export_dialog.h"

#include "core/error.h"
#include "core/free_format_reader.h"
#include "export/auxiliary_export.h"
#include "export/housekeeping_export.h"
#include "export/spectra_export.h"
#include "views/auxiliary_view.h"

namespace morvane {

namespace {

const Export_Dialog_Texts kTexts[] = {
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
struct Export_Shape {
  int64_t lines = 0;
  int64_t cells = 0;
};

std::optional<Export_Shape> export_shape(Export_Kind kind, const Export_Request& request) {
  const int64_t entries = request.range.size();
  switch (kind) {
    case Export_Kind::Housekeeping: {
      int64_t ticked = 0;
      for (const bool sensor : request.sensors) ticked += sensor ? 1 : 0;
      return Export_Shape{4 + entries, 2 + ticked};  // four heading lines, a line an entry
    }
    case Export_Kind::DS_Calibration: return Export_Shape{5 + entries, 2};
    case Export_Kind::Spectra: return Export_Shape{5 + kLastBin + 1, 1 + entries};  // a column a spectrum
    case Export_Kind::Auxiliary: return std::nullopt;
  }
  return std::nullopt;
}

int32_t range_limit(Export_Kind kind, const Session& session, const std::optional<DS_Calibration_Index>& ds_index,
                    const std::optional<Spectrum_Table>& spectra) {
  switch (kind) {
    case Export_Kind::Housekeeping: return session.catalogue.HK_Count();
    case Export_Kind::Auxiliary: return session.catalogue.Science_Count();
    case Export_Kind::DS_Calibration: return ds_index->count();
    case Export_Kind::Spectra: return spectra->spectrum_count();
  }
  return 0;
}

}  // namespace

const Export_Dialog_Texts& export_dialog_texts(Export_Kind kind) { return kTexts[static_cast<size_t>(kind)]; }

std::optional<std::string> export_guard(const Session& session, Export_Kind kind) {
  if (session.File_Name.empty()) return "Please load an EGSE data file";
  const Catalogue_Counters& counters = session.catalogue.counters;
  if (kind == Export_Kind::Spectra && counters.GC_Spectrum_Count() + counters.Isotope_Spectrum_Count() < 1) {
    return "The EGSE data file contains no spectra";
  }
  return std::nullopt;
}

Export_Dialog::Export_Dialog(Export_Kind kind, const Session& session)
    : kind_(kind),
      ad590_session_text_(ad590_temperature_text(session.config)),
      ds_index_(kind == Export_Kind::DS_Calibration ? std::optional<DS_Calibration_Index>(std::in_place, session)
                                                    : std::nullopt),
      spectra_(kind == Export_Kind::Spectra ? std::optional<Spectrum_Table>(build_spectrum_table(session.catalogue))
                                            : std::nullopt),
      range_(range_limit(kind, session, ds_index_, spectra_)) {
  if (kind == Export_Kind::Housekeeping) {
    for (const Sensor_Record& record : session.config.Sensor_Table) sensor_captions.push_back(record.Sensor_Name);
    sensors.assign(sensor_captions.size(), true);
  }
  ad590_text = ad590_session_text_;
}

Export_Dialog::Validation Export_Dialog::Command1_Click() {
  Validation validation;
  const std::optional<Entry_Range> range = range_.validate();
  if (!range) {
    validation.message = texts().invalid_range;
    return validation;
  }
  Export_Request request;
  request.kind = kind_;
  request.range = *range;
  request.format = format;
  request.delimiter = kDelimiterOptions[static_cast<size_t>(delimiter)].character;
  request.sensors = sensors;
  if (kind_ == Export_Kind::Auxiliary && format == static_cast<int>(Aux_Format::Calibrated_AD590)) {
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

std::unique_ptr<Export_Output> Export_Dialog::open_output(const std::string& path, Export_File_Type type,
                                                          const Export_Request& request) const {
  try {
    return open_export_output(path, type, request.delimiter, texts().sheet_name);
  } catch (const RuntimeError&) {
    return nullptr;
  }
}

void Export_Dialog::check_fits(const std::string& path, Export_File_Type type, const Export_Request& request) const {
  constexpr int64_t kSheetRows = 1048576;
  constexpr int64_t kSheetColumns = 16384;
  if (type != Export_File_Type::Workbook) return;
  const std::optional<Export_Shape> shape = export_shape(kind_, request);
  if (!shape) return;
  if (shape->lines > kSheetRows) {
    raise(ErrorNumber::SubscriptOutOfRange, path + ": an .xlsx sheet holds at most 1048576 rows");
  }
  if (shape->cells > kSheetColumns) {
    raise(ErrorNumber::SubscriptOutOfRange, path + ": an .xlsx sheet holds at most 16384 columns");
  }
}

Export_Result Export_Dialog::write(Session& session, const Export_Request& request, Export_Output& output,
                                   const Export_Progress& progress) const {
  Export_Result result;
  try {
    switch (kind_) {
      case Export_Kind::Housekeeping:
        result = write_housekeeping(session, {request.range, static_cast<HK_Format>(request.format), request.sensors},
                                    output, progress);
        break;
      case Export_Kind::Auxiliary:
        // The temperature counts as the AD590 dialog sets it, as its N-type voltage; for this
        // export only, the session's setting stays.
        result = write_auxiliary(session,
                                 {request.range, static_cast<Aux_Format>(request.format),
                                  session.config.NType.NType_Reverse_Lookup(request.ad590_celsius)},
                                 output, progress);
        break;
      case Export_Kind::DS_Calibration:
        result = write_ds_calibration(session, *ds_index_, {request.range, static_cast<DS_Format>(request.format)},
                                      output, progress);
        break;
      case Export_Kind::Spectra:
        result = write_spectra(session, *spectra_, {request.range, static_cast<Spectra_Format>(request.format)}, output,
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
