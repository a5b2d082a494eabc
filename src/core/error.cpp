// SPDX-License-Identifier: MIT
#include "core/error.h"
#include "core/system_error.h"

#include <cerrno>
#include <cstring>

namespace morvane {

std::string error_description(ErrorNumber number) {
  if (number == kDiskFull) return "Disk full";
  switch (number) {
    case ErrorNumber::InvalidProcedureCall: return "Invalid procedure call or argument";
    case ErrorNumber::Overflow: return "Overflow";
    case ErrorNumber::SubscriptOutOfRange: return "Subscript out of range";
    case ErrorNumber::DivisionByZero: return "Division by zero";
    case ErrorNumber::TypeMismatch: return "Type mismatch";
    case ErrorNumber::BadFileName: return "Bad file name or number";
    case ErrorNumber::FileNotFound: return "File not found";
    case ErrorNumber::FileAlreadyOpen: return "File already open";
    case ErrorNumber::DeviceIoError: return "Device I/O error";
    case ErrorNumber::InputPastEndOfFile: return "Input past end of file";
    case ErrorNumber::PermissionDenied: return "Permission denied";
    case ErrorNumber::PathNotFound: return "Path not found";
    case ErrorNumber::Cancelled: return "Cancel was selected";
  }
  return "Application-defined or object-defined error";
}

static std::string compose(const std::string& description, const std::string& detail, int number) {
  std::string text = description;
  if (!detail.empty()) text += ": " + detail;
  return text + "; Error number " + std::to_string(number);
}

RuntimeError::RuntimeError(ErrorNumber number, std::string detail)
    : std::runtime_error(compose(error_description(number), detail, static_cast<int>(number))),
      number_(static_cast<int>(number)),
      description_(error_description(number)),
      detail_(std::move(detail)) {}

std::string RuntimeError::message() const { return what(); }

void raise(ErrorNumber number, std::string detail) { throw RuntimeError(number, std::move(detail)); }

RuntimeError naming_file(const RuntimeError& error, const std::string& path) {
  if (path.empty() || error.detail().find(path) != std::string::npos) return error;
  const std::string detail = error.detail().empty() ? path : path + ": " + error.detail();
  return RuntimeError(static_cast<ErrorNumber>(error.number()), detail);
}

RuntimeError system_error(int error, const std::string& detail, ErrorNumber otherwise) {
  ErrorNumber number = otherwise;
  switch (error) {
    case EACCES: case EPERM: case EROFS: number = ErrorNumber::PermissionDenied; break;
    case ENOSPC: case EDQUOT: case EFBIG: number = kDiskFull; break;
    case ENOTDIR: case ELOOP: number = ErrorNumber::PathNotFound; break;
    case EISDIR: number = ErrorNumber::BadFileName; break;
    default: break;
  }
  const char* words = error == EFBIG ? "disk full: the file size limit is reached" : std::strerror(error);
  if (number == kDiskFull && error != EFBIG) words = "disk full";
  return RuntimeError(number, detail + " (" + words + ")");
}

void raise_system_error(int error, const std::string& detail, ErrorNumber otherwise) {
  throw system_error(error, detail, otherwise);
}

RuntimeError from_filesystem_error(const std::filesystem::filesystem_error& error) {
  return system_error(error.code().value(), error.path1().string(), ErrorNumber::PathNotFound);
}

}  // namespace morvane
