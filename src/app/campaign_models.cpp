// SPDX-License-Identifier: MIT
#include "campaign_models.h"

#include <QBrush>
#include <QColor>

namespace morvane {

namespace {

const QColor k_failure_colour(255, 0, 0);

QString text_of(const std::string& text) { return QString::fromStdString(text); }

QVariant time_or_blank(const std::optional<int32_t>& time, int role) {
  if (!time) return role == kSortRole ? QVariant(qint64(INT64_MIN)) : QVariant();
  return role == kSortRole ? QVariant(qint64(*time)) : QVariant(QString::number(*time));
}

// A number shown as text and sorted as a number.
QVariant number(int64_t value, int role) {
  return role == kSortRole ? QVariant(qint64(value)) : QVariant(QString::number(value));
}

bool is_text_role(int role) { return role == Qt::DisplayRole || role == kSortRole; }

}  // namespace

QString test_mode_caption(const std::string& mode) {
  return mode == "eaft" ? QStringLiteral("EAFT") : QStringLiteral("Cruise Phase");
}

QString failed_items_text(const archive::TestRecord& test) {
  QStringList names;
  for (const archive::TestItem& item : test.items) {
    // The summary's sub-system rows restate the items that failed in them.
    if (item.failed && item.table != "subsystems") names << text_of(item.name).trimmed();
  }
  return names.join(QStringLiteral(", "));
}

// --- The base ------------------------------------------------------------------------------

CampaignTableModel::CampaignTableModel(QStringList headings, QObject* parent)
    : QAbstractTableModel(parent), headings_(std::move(headings)) {}

int CampaignTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(headings_.size());
}

QVariant CampaignTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= headings_.size()) {
    return QAbstractTableModel::headerData(section, orientation, role);
  }
  return headings_[section];
}

void CampaignTableModel::set_file_names(std::map<int64_t, QString> names) { file_names_ = std::move(names); }

QString CampaignTableModel::fileName(int64_t file_id) const {
  const auto found = file_names_.find(file_id);
  return found == file_names_.end() ? QString::number(file_id) : found->second;
}

// --- Files ---------------------------------------------------------------------------------

CampaignFileModel::CampaignFileModel(QObject* parent)
    : CampaignTableModel({tr("Id"), tr("Name"), tr("Type"), tr("Byte Reverse"), tr("Size (bytes)"), tr("Frames"),
                            tr("First lander time (s)"), tr("Last lander time (s)"), tr("Housekeeping"),
                            tr("Science"), tr("Information"), tr("Tests"), tr("Findings"), tr("SHA-256"),
                            tr("Path")},
                           parent) {}

void CampaignFileModel::set_files(std::vector<archive::FileRecord> files) {
  beginResetModel();
  files_ = std::move(files);
  std::map<int64_t, QString> names;
  for (const archive::FileRecord& file : files_) names[file.file_id] = text_of(file.name);
  set_file_names(std::move(names));
  endResetModel();
}

int CampaignFileModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(files_.size());
}

QVariant CampaignFileModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || !is_text_role(role)) return {};
  const archive::FileRecord& f = file(index.row());
  switch (index.column()) {
    case Id: return number(f.file_id, role);
    case Name: return text_of(f.name);
    case Type: return text_of(f.type);
    case ByteReverse: return f.byte_reverse ? QStringLiteral("on") : QStringLiteral("off");
    case Size: return number(f.size, role);
    case Frames: return number(f.frames, role);
    case FirstTime: return time_or_blank(f.first_lander_time, role);
    case LastTime: return time_or_blank(f.last_lander_time, role);
    case Housekeeping: return number(f.hk_count, role);
    case Science: return number(f.science_count, role);
    case Information: return number(f.information_count, role);
    case Tests: return number(f.tests, role);
    case Findings: return number(f.findings, role);
    case Sha256: return text_of(f.sha256);
    case Path: return text_of(f.path);
    default: return {};
  }
}

// --- Tests ---------------------------------------------------------------------------------

CampaignTestModel::CampaignTestModel(QObject* parent)
    : CampaignTableModel({tr("File"), tr("Mode"), tr("Test"), tr("Seq. Count"), tr("Lander time (s)"),
                            tr("Verdict"), tr("Failed items"), tr("Packet message")},
                           parent) {}

void CampaignTestModel::set_tests(std::vector<archive::TestRecord> tests) {
  beginResetModel();
  tests_ = std::move(tests);
  endResetModel();
}

int CampaignTestModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(tests_.size());
}

QVariant CampaignTestModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const archive::TestRecord& t = test(index.row());
  const bool passed = t.overall && *t.overall == "Passed";
  if (role == Qt::ForegroundRole) {
    const bool red = (index.column() == Verdict && !passed) || index.column() == FailedItems;
    return red ? QVariant(QBrush(k_failure_colour)) : QVariant();
  }
  if (role == Qt::ToolTipRole && index.column() == Verdict && !t.error.empty()) return text_of(t.error);
  if (!is_text_role(role)) return {};
  switch (index.column()) {
    case File: return role == kSortRole ? QVariant(qint64(t.file_id)) : QVariant(fileName(t.file_id));
    case Mode: return test_mode_caption(t.mode);
    case Number: return number(t.number, role);
    case SequenceCount: return number(t.sequence_count, role);
    case LanderTime: return number(t.lander_time, role);
    case Verdict: return t.overall ? text_of(*t.overall) : tr("Not evaluated");
    case FailedItems: return failed_items_text(t);
    case PacketMessage: return text_of(t.packet_message).trimmed();
    default: return {};
  }
}

// --- Events --------------------------------------------------------------------------------

CampaignEventModel::CampaignEventModel(QObject* parent)
    : CampaignTableModel({tr("File"), tr("Entry"), tr("Lander time (s)"), tr("Label"), tr("Translation")}, parent) {
}

void CampaignEventModel::set_events(std::vector<archive::EventRecord> events) {
  beginResetModel();
  events_ = std::move(events);
  endResetModel();
}

int CampaignEventModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(events_.size());
}

QVariant CampaignEventModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const archive::EventRecord& e = event(index.row());
  auto lines = [&](const QString& separator) {
    QStringList texts;
    for (const std::string& line : e.lines) {
      if (!QString::fromStdString(line).trimmed().isEmpty()) texts << text_of(line).trimmed();
    }
    return texts.join(separator);
  };
  if (role == Qt::ToolTipRole && index.column() == Lines) return lines(QStringLiteral("\n"));
  if (!is_text_role(role)) return {};
  switch (index.column()) {
    case File: return role == kSortRole ? QVariant(qint64(e.file_id)) : QVariant(fileName(e.file_id));
    case Entry: return number(e.index, role);
    case LanderTime: return number(e.lander_time, role);
    case Label: return text_of(e.label).trimmed();
    case Lines: return lines(QStringLiteral("  |  "));
    default: return {};
  }
}

}  // namespace morvane
