// SPDX-License-Identifier: MIT
#include "core/error.h"

namespace morvane {

std::string error_description(ErrorNumber number) {
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

}  // namespace morvane
