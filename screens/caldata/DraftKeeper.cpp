// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/DraftKeeper.h"

#include <algorithm>
#include <utility>

#include "screens/caldata/DraftStrip.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

// The subjects of notices.
constexpr const char* kNotKept = "draft";
constexpr const char* kDamaged = "damaged draft";

/// Less than a second, so that there is time for the write itself.
constexpr qint64 kInterval = 800;  // ms

std::int64_t Now() {
  return QDateTime::currentSecsSinceEpoch();
}

}  // namespace

DraftKeeper::DraftKeeper(Editor editor) : QObject(editor.screen), editor_(std::move(editor)) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, &DraftKeeper::WriteGuarded);
  connect(editor_.strip, &DraftStrip::Restore, this, &DraftKeeper::Restore);
  connect(editor_.strip, &DraftStrip::Discard, this, &DraftKeeper::Discard);
}

void DraftKeeper::Begin(const std::string& model, const std::string& file) {
  timer_.stop();
  sinceWrite_.invalidate();
  opened_ = editor_.state();
  written_ = opened_;
  drafts_.reset();
  drafts_.emplace(model, file, Now());
  // A program may have been killed after it had saved.
  Guarded(
      editor_.screen, [this] { drafts_->RemoveAllOf(opened_); },
      [](const Error& /*error*/) { /* The draft is only offered once more. */ });
  QStringList paths;
  for (const std::string& path : drafts_->Damaged()) {
    paths << ToQt(path);
  }
  editor_.notices->Report(
      kDamaged, paths.isEmpty()
                    ? QString()
                    : tr("A draft of these data cannot be read: it is damaged, or of another "
                         "version of the program. It was kept as %1.")
                          .arg(paths.join(", ")));
  OfferNext();
}

void DraftKeeper::Changed() {
  if (!drafts_ || timer_.isActive()) {
    return;
  }
  // At once, but after the event: until then, only a part of the change may have been made.
  const qint64 wait =
      sinceWrite_.isValid() ? std::max<qint64>(0, kInterval - sinceWrite_.elapsed()) : 0;
  timer_.start(static_cast<int>(wait));
}

void DraftKeeper::Write() {
  const EditorState state = editor_.state();
  if (state == written_) {
    return;
  }
  sinceWrite_.start();
  if (state == opened_) {
    drafts_->RemoveOwn();
  } else {
    drafts_->Write(state, Now());
  }
  written_ = state;
}

void DraftKeeper::WriteGuarded() {
  const bool kept = Guarded(
      editor_.screen, [this] { Write(); },
      [this](const Error& error) {
        editor_.notices->Report(
            kNotKept,
            tr("What is typed is not kept as a draft. %1").arg(ToQt(error.what()).simplified()));
      });
  if (kept) {
    editor_.notices->Report(kNotKept, {});
  }
}

void DraftKeeper::Saved() {
  timer_.stop();
  Guarded(
      editor_.screen, [this] { drafts_->RemoveAllOf(editor_.state()); },
      [](const Error& /*error*/) { /* The data are saved. The next editor removes the draft. */ });
  drafts_.reset();
}

void DraftKeeper::End() {
  timer_.stop();
  if (drafts_) {
    WriteGuarded();
    drafts_.reset();
  }
  editor_.strip->Withdraw();
}

void DraftKeeper::OfferNext() {
  const Draft* draft = drafts_->Offered();
  if (draft == nullptr) {
    editor_.strip->Withdraw();
  } else {
    editor_.strip->Offer(QDateTime::fromSecsSinceEpoch(draft->written), drafts_->OfferedCount(),
                         drafts_->IsOfferedOutdated());
  }
}

void DraftKeeper::Restore() {
  Guarded(editor_.screen, [this] {
    // What has been typed since is offered afterwards.
    Write();
    const EditorState draft = drafts_->Offered()->state;
    editor_.show(draft);
    drafts_->TakeOffered();
    written_ = draft;
    Changed();
    OfferNext();
  });
}

void DraftKeeper::Discard() {
  Guarded(editor_.screen, [this] {
    drafts_->DiscardOffered();
    OfferNext();
  });
}

}  // namespace tarvell
