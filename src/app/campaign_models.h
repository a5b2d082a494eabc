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
class Campaign_Table_Model : public QAbstractTableModel {
  Q_OBJECT

 public:
  Campaign_Table_Model(QStringList headings, QObject* parent);

  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

  // The names of the archive's files by their id, for the tables that name a file.
  void setFileNames(std::map<int64_t, QString> names);
  QString fileName(int64_t file_id) const;

 private:
  QStringList headings_;
  std::map<int64_t, QString> file_names_;
};

// The archive's files, one row each in ingest order.
class Campaign_File_Model : public Campaign_Table_Model {
  Q_OBJECT

 public:
  enum Column { Id, Name, Type, ByteReverse, Size, Frames, FirstTime, LastTime, Housekeeping, Science, Information,
                Tests, Findings, Sha256, Path };

  explicit Campaign_File_Model(QObject* parent = nullptr);

  void setFiles(std::vector<archive::File_Record> files);
  const std::vector<archive::File_Record>& files() const { return files_; }
  const archive::File_Record& file(int row) const { return files_.at(static_cast<size_t>(row)); }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

 private:
  std::vector<archive::File_Record> files_;
};

// The short form tests of every file, one row each: its verdict and its failed items in red.
class Campaign_Test_Model : public Campaign_Table_Model {
  Q_OBJECT

 public:
  enum Column { File, Mode, Number, SequenceCount, LanderTime, Verdict, FailedItems, PacketMessage };

  explicit Campaign_Test_Model(QObject* parent = nullptr);

  void setTests(std::vector<archive::Test_Record> tests);
  const archive::Test_Record& test(int row) const { return tests_.at(static_cast<size_t>(row)); }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

 private:
  std::vector<archive::Test_Record> tests_;
};

// The information entries an event search found, one row each with its five translation lines.
class Campaign_Event_Model : public Campaign_Table_Model {
  Q_OBJECT

 public:
  enum Column { File, Entry, LanderTime, Label, Lines };

  explicit Campaign_Event_Model(QObject* parent = nullptr);

  void setEvents(std::vector<archive::Event_Record> events);
  const archive::Event_Record& event(int row) const { return events_.at(static_cast<size_t>(row)); }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

 private:
  std::vector<archive::Event_Record> events_;
};

// "Cruise Phase" or "EAFT" for the archive's mode names "cruise" and "eaft".
QString test_mode_caption(const std::string& mode);
// The names of a test's failed items (not the summary's sub-systems), joined by commas.
QString failed_items_text(const archive::Test_Record& test);

}  // namespace morvane
