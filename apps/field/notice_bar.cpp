#include "apps/field/notice_bar.h"

#include <QHBoxLayout>
#include <algorithm>

namespace tiltpole::field {

NoticeBar::NoticeBar(QWidget* parent) : QWidget(parent), text_(new QLabel(this)) {
  text_->setObjectName("notice");
  text_->setWordWrap(true);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(text_, 1);
  auto* seen = NewButton("notice_seen", tr("OK"), this);
  seen->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  layout->addWidget(seen);
  connect(seen, &QPushButton::clicked, this, [this] {
    if (!notices_.isEmpty()) notices_.removeFirst();
    ShowFirst();
  });
  hide();
}

void NoticeBar::PlaceAt(QPoint corner, int width) {
  corner_ = corner;
  const int height = std::max(kTouchSize, layout()->heightForWidth(width));
  setGeometry(QRect(corner, QSize(width, height)));
}

void NoticeBar::Say(const QString& text, Tone tone) {
  const bool known = std::any_of(notices_.begin(), notices_.end(),
                                 [&text](const Notice& notice) { return notice.text == text; });
  if (!known) notices_.append({text, tone});
  ShowFirst();
}

void NoticeBar::ShowFirst() {
  setVisible(!notices_.isEmpty());
  if (notices_.isEmpty()) return;
  raise();
  const QString more = notices_.size() > 1 ? tr(" (and %1 more)").arg(notices_.size() - 1) : "";
  SetText(*text_, notices_.first().text + more);
  SetTone(*text_, notices_.first().tone);
  PlaceAt(corner_, width());
}

}  // namespace tiltpole::field
