// SPDX-License-Identifier: MIT
#include "test_files.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

namespace morvane::testing {

namespace fs = std::filesystem;

TempDir::TempDir() {
  std::random_device device;
  const fs::path base = fs::temp_directory_path();
  for (int attempt = 0; attempt < 100; ++attempt) {
    const fs::path candidate = base / ("morvane-test-" + std::to_string(device()));
    if (fs::create_directory(candidate)) {
      root_ = candidate.string();
      return;
    }
  }
  throw std::runtime_error("cannot create a temporary folder");
}

TempDir::~TempDir() {
  std::error_code error;
  fs::remove_all(root_, error);
}

void write_file(const std::string& path, const std::string& content) {
  fs::create_directories(fs::path(path).parent_path());
  std::ofstream out(path, std::ios::binary);
  out << content;
}

void write_bytes(const std::string& path, const std::vector<uint8_t>& bytes) {
  write_file(path, std::string(bytes.begin(), bytes.end()));
}

std::string read_file(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream out;
  out << in.rdbuf();
  return out.str();
}

std::string source_path(const std::string& relative) {
  return (std::filesystem::path(MORVANE_SOURCE_DIR) / relative).string();
}

void FrameWriter::put_word(size_t offset, int32_t word) {
  if (bytes_.size() < offset + 2) bytes_.resize(offset + 2);
  const auto high = static_cast<uint8_t>((word >> 8) & 0xFF), low = static_cast<uint8_t>(word & 0xFF);
  bytes_[offset] = low_first_ ? low : high;
  bytes_[offset + 1] = low_first_ ? high : low;
}

void FrameWriter::add_frame(const std::vector<Packet>& packets) {
  const size_t frame_start = frames_++ * static_cast<size_t>(stride_);
  if (bytes_.size() < frame_start + static_cast<size_t>(stride_)) bytes_.resize(frame_start + static_cast<size_t>(stride_));
  size_t offset = frame_start + 22;
  for (const Packet& packet : packets) {
    put_word(offset, packet.identifier);
    put_word(offset + 2, packet.sequence_word);
    put_word(offset + 4, packet.length_field);
    put_word(offset + 6, packet.time_high);
    put_word(offset + 8, packet.time_low);
    for (const auto& [k, word] : packet.words) put_word(offset + static_cast<size_t>(k), word);
    for (const auto& [k, byte] : packet.bytes) {
      if (bytes_.size() <= offset + static_cast<size_t>(k)) bytes_.resize(offset + static_cast<size_t>(k) + 1);
      bytes_[offset + static_cast<size_t>(k)] = byte;
    }
    offset += static_cast<size_t>(packet.length_field + 7);
  }
}

std::vector<int32_t> zeb_record(const std::map<int, int32_t>& items) {
  std::vector<int32_t> record(136, 0);
  for (const auto& [item, value] : items) record[static_cast<size_t>(item - 1)] = value;
  return record;
}

int32_t selector_example(LabelCode label) {
  const LabelRule& rule = label_rule(label);
  if (rule.selector_value != kAnyOtherValue) return rule.selector_value;
  if (packet_kind_info(rule.kind).selector == Selector::None) return 0;
  for (int32_t value = 1;; ++value) {
    bool taken = false;
    for (const LabelRule& other : kLabelRules) {
      taken = taken || (other.kind == rule.kind && other.selector_value == value);
    }
    if (!taken) return value;
  }
}

int32_t unknown_identifier(FormatFamily family) {
  int32_t identifier = identifier_of(PacketKind::Housekeeping, family) + 1;
  while (kind_of_identifier(identifier, family) != PacketKind::Unknown) ++identifier;
  return identifier;
}

namespace {

int32_t identifier_example(LabelCode label, FormatFamily family) {
  const PacketKind kind = kind_of(label);
  return kind == PacketKind::Unknown ? unknown_identifier(family) : identifier_of(kind, family);
}

}  // namespace

Packet labelled(LabelCode label, Packet packet) {
  packet.identifier = identifier_example(label, FormatFamily::Frames282);
  const Selector selector = packet_kind_info(kind_of(label)).selector;
  const int32_t value = selector_example(label);
  // The class of events and acceptance reports is the high byte of its word.
  if (selector != Selector::None) {
    packet.words[selector_offset(selector)] = selector == Selector::EventClass ? value << 8 : value;
  }
  return packet;
}

Packet labelled(LabelCode label, int32_t sequence_word, int32_t length_field, int32_t time_low) {
  Packet packet;
  packet.sequence_word = sequence_word;
  packet.length_field = length_field;
  packet.time_low = time_low;
  return labelled(label, packet);
}

std::vector<int32_t> zeb_record(LabelCode label, std::map<int, int32_t> items) {
  items[5] = identifier_example(label, FormatFamily::Zeb);
  const Selector selector = packet_kind_info(kind_of(label)).selector;
  if (selector != Selector::None) items[selector_item(selector)] = selector_example(label);
  return zeb_record(items);
}

std::string zeb_text(const std::vector<std::vector<int32_t>>& records) {
  std::ostringstream out;
  for (int i = 0; i < 136; ++i) out << (i % 8 == 0 ? (i ? "\r\n" : "") : ", ") << 9000 + i;
  out << "\r\n";
  for (const auto& record : records) {
    for (size_t i = 0; i < record.size(); ++i) out << (i % 8 == 0 ? (i ? "\r\n" : "") : ", ") << record[i];
    out << "\r\n";
  }
  return out.str();
}

}  // namespace morvane::testing

#include <sys/wait.h>

namespace morvane::testing {

static std::string shell_quote(const std::string& text) {
  std::string quoted = "'";
  for (char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

// Declared where tests run programs under limits (tests/cli/limited_run.h).
ProgramRun run_program_after(const std::string& setup, const std::string& program,
                             const std::vector<std::string>& arguments, const std::string& working_folder);

ProgramRun run_program(const std::string& program, const std::vector<std::string>& arguments,
                       const std::string& working_folder) {
  return run_program_after("", program, arguments, working_folder);
}

ProgramRun run_program_after(const std::string& setup, const std::string& program,
                             const std::vector<std::string>& arguments, const std::string& working_folder) {
  TempDir scratch;
  std::string command;
  if (!working_folder.empty()) command += "cd " + shell_quote(working_folder) + " && ";
  if (!setup.empty()) command += setup + "; exec ";
  std::string path = MORVANE_BINARY_DIR;
  path.append("/").append(program);
  command += shell_quote(path);
  for (const auto& argument : arguments) command += " " + shell_quote(argument);
  command += " >" + shell_quote(scratch.path("out")) + " 2>" + shell_quote(scratch.path("err"));
  const int raw = std::system(command.c_str());
  ProgramRun run;
  run.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  run.out = read_file(scratch.path("out"));
  run.err = read_file(scratch.path("err"));
  return run;
}

}  // namespace morvane::testing
