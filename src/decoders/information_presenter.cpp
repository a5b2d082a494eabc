// SPDX-License-Identifier: MIT
#include "decoders/information_presenter.h"

namespace morvane {

int32_t InformationPresenter::scroll_maximum(const Session& session) {
  const int32_t count = session.catalogue.Information_Count();
  return count < 1 ? 1 : count;
}

void InformationPresenter::show(Session& session, int32_t index) {
  session.Current_Information_Index = index;
  const Packet_Entry& entry = session.catalogue.Information_List.at(index);
  labels_.Label2 = "Lander Pkt  " + std::to_string(entry.Packet_Frame);
  labels_.Label3 = "Information Pkt " + std::to_string(index);
  labels_.Label5 = std::string(label_text(entry.Label));
  labels_.Label7 = std::to_string(entry.Sequence_Count);
  labels_.Label9 = std::to_string(entry.Lander_Time);

  const TelemetryFile& file = session.telemetry();
  if (session.File_Type == FileFormat::ZEB) {
    // ZEB records are shown as numbers and never translated: Picture2 keeps what it showed.
    raw_dump_ = zeb_dump_drawing(file.zeb().record(entry.Packet_Frame));
    return;
  }
  Load_Information(file, entry, session.Byte_Reverse, words_);
  raw_dump_ = raw_dump_drawing(words_);

  // Picture2 is cleared first; the memory tables are drawn before the lines are printed.
  translation_ = Translation{};
  memory_.clear();
  translation_ = Translate_Information(session.config, entry.Label, words_, memory_);
}

Drawing InformationPresenter::translation_drawing() const {
  Drawing picture;
  picture.reserve(translation_.size() + memory_.size());
  for (size_t i = 0; i < translation_.size(); ++i) {
    picture.push_back(
        {translation_[i].text, 0, static_cast<int>(i) * kTranslationRowHeight, translation_[i].colour, Anchor::Left});
  }
  picture.insert(picture.end(), memory_.begin(), memory_.end());
  return picture;
}

}  // namespace morvane
