// SPDX-License-Identifier: MIT
#pragma once

#include "workstation.h"

namespace morvane {

class EGSE_MDI;

// The workstation the main window gives its child windows: each call goes to the part of the
// main window that does it (the session and loads, the view manager, live follow, the menus).
class MainWorkstation final : public Workstation {
  Q_OBJECT

 public:
  explicit MainWorkstation(EGSE_MDI& window);

  Session& session() override;
  Dialogs& dialogs() override;
  ChildView* view(ViewKind kind) override;
  ChildView* show_view(ViewKind kind) override;
  void close_view(ViewKind kind) override;
  void show_entry(ViewKind kind) override;
  bool load_file(FileFormat type, const QString& path) override;
  void set_byte_reverse(bool on) override;
  bool collection_ticking() const override;
  void set_collection_ticking(bool on) override;
  void set_menus_enabled(bool on) override;

 private:
  EGSE_MDI& window_;
};

}  // namespace morvane
