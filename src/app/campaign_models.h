// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include <QAbstractTableModel>
#include <QString>

#include "archive/archive.h"

namespace morvane {

// The tables of the Campaign window: the records an archive query returned, their texts made in
// data(). Each model answers kSortRole with the value a column sorts by (numbers as numbers),
// for a QSortFilterProxyModel in front of it.
inline constexpr int kSortRole = Qt::UserRole;

// Base of the three tables: column headings and the file names the records point at.
class CampaignTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  CampaignTableModel(QStringList headings, QObject* parent);

  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

  // The names of the archive's files by their id, for the tables that name a file.
  void set_file_names(std::map<int64_t, QString> names);
  QString fileName(int64_t file_id) const;

 private:
  QStringList headings_;
  std::map<int64_t, QString> file_names_;
};

// The archive's files, one row each in ingest order.
class CampaignFileModel : public CampaignTableModel {
  Q_OBJECT

 public:
  enum Column { Id, Name, Type, ByteReverse, Size, Frames, FirstTime, LastTime, Housekeeping, Science, Information,
                Tests, Findings, Sha256, Path };

  explicit CampaignFileModel(QObject* parent = nullptr);

  void set_files(std::vector<archive::FileRecord> files);
  const std::vector<archive::FileRecord>& files() const { return files_; }
  const archive::FileRecord& file(int row) const { return files_.at(static_cast<size_t>(row)); }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

 private:
  std::vector<archive::FileRecord> files_;
};

// The short form tests of every file, one row each: its verdict and its failed items in red.
class CampaignTestModel : public CampaignTableModel {
  Q_OBJECT

 public:
  enum Column { File, Mode, Number, SequenceCount, LanderTime, Verdict, FailedItems, PacketMessage };

  explicit CampaignTestModel(QObject* parent = nullptr);

  void set_tests(std::vector<archive::TestRecord> tests);
  const archive::TestRecord& test(int row) const { return tests_.at(static_cast<size_t>(row)); }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

 private:
  std::vector<archive::TestRecord> tests_;
};

// The information entries an event search found, one row each with its five translation lines.
class CampaignEventModel : public CampaignTableModel {
  Q_OBJECT

 public:
  enum Column { File, Entry, LanderTime, Label, Lines };

  explicit CampaignEventModel(QObject* parent = nullptr);

  void set_events(std::vector<archive::EventRecord> events);
  const archive::EventRecord& event(int row) const { return events_.at(static_cast<size_t>(row)); }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

 private:
  std::vector<archive::EventRecord> events_;
};

// "Cruise Phase" or "EAFT" for the archive's mode names "cruise" and "eaft".
QString test_mode_caption(const std::string& mode);
// The names of a test's failed items (not the summary's sub-systems), joined by commas.
QString failed_items_text(const archive::TestRecord& test);

}  // namespace morvane
