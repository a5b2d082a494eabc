// SPDX-License-Identifier: MIT
// The entry of every benchmark of the workstation's windows: they need an application object
// and run offscreen unless told otherwise.
#include <benchmark/benchmark.h>

#include <cstdlib>

#include <QApplication>

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
