// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <stdexcept>

namespace morvane {

// The classic run-time error numbers the program reports.
enum class ErrorNumber : int {
  InvalidProcedureCall = 5,
  Overflow = 6,
  SubscriptOutOfRange = 9,
  DivisionByZero = 11,
  TypeMismatch = 13,
  BadFileName = 52,
  FileNotFound = 53,
  FileAlreadyOpen = 55,
  DeviceIoError = 57,
  InputPastEndOfFile = 62,
  PermissionDenied = 70,
  PathNotFound = 76,
  Cancelled = 32755,
};

// The one error type of the program: a run-time error number, its classic description and,
// where it helps the user, what failed (a file, a line, a value).
class RuntimeError : public std::runtime_error {
 public:
  RuntimeError(ErrorNumber number, std::string detail = {});

  int number() const { return number_; }
  // The classic description of the number ("Overflow", "Subscript out of range", ...).
  const std::string& description() const { return description_; }
  // What failed, or empty.
  const std::string& detail() const { return detail_; }
  // The text a message box shows: "<description>[: <detail>]; Error number <n>".
  std::string message() const;

 private:
  int number_;
  std::string description_;
  std::string detail_;
};

std::string error_description(ErrorNumber number);

[[noreturn]] void raise(ErrorNumber number, std::string detail = {});

}  // namespace morvane
