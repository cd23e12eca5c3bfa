// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/DraftKeeper.h"

#include <algorithm>
#include <utility>

#include "core/caldata/DraftMerge.h"
#include "screens/caldata/DraftStrip.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

// The subjects of notices.
constexpr const char* kNotKept = "draft";
constexpr const char* kDamaged = "damaged draft";
constexpr const char* kNewer = "newer values";
constexpr const char* kOthers = "other drafts";

/// Less than a second, so that there is time for the write itself.
constexpr qint64 kInterval = 800;  // ms

/// After a draft could not be written, even if nothing more is typed.
constexpr int kRetryInterval = 5000;  // ms

std::int64_t Now() {
  return QDateTime::currentSecsSinceEpoch();
}

}  // namespace

DraftKeeper::DraftKeeper(Editor editor) : QObject(editor.screen), editor_(std::move(editor)) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  retry_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &DraftKeeper::WriteAndReport);
  connect(&retry_, &QTimer::timeout, this, &DraftKeeper::WriteAndReport);
  connect(editor_.strip, &DraftStrip::Restore, this, &DraftKeeper::Restore);
  connect(editor_.strip, &DraftStrip::Discard, this, &DraftKeeper::Discard);
}

void DraftKeeper::Start(const std::string& model, const std::string& file, DraftKind kind) {
  timer_.stop();
  retry_.stop();
  sinceWrite_.invalidate();
  opened_ = editor_.state();
  written_ = opened_;
  drafts_.reset();
  drafts_.emplace(model, file, Now(), kind);
  Guarded(
      editor_.screen, [this] { drafts_->Begin(opened_); },
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
  ReportOthers(kind);
  OfferNext();
}

/// Nothing that was typed is forgotten because the data set was opened in another way.
void DraftKeeper::ReportOthers(DraftKind kind) {
  const QString where = kind == DraftKind::NewCalibration
                            ? tr("A draft of these data is kept, too. To see it, close this screen "
                                 "and choose Edit.")
                            : tr("A draft of a new calibration is kept, too. To see it, close this "
                                 "screen and choose New calibration.");
  editor_.notices->Report(kOthers, drafts_->HasDraftsOfOtherKind() ? where : QString());
}

void DraftKeeper::Changed() {
  if (!drafts_ || timer_.isActive()) {
    return;
  }
  // Not before the event has ended: until then only a part of the change may have been made.
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
  if (HaveSameContent(state, opened_)) {
    if (editor_.canRedo()) {
      // Undo may have been pressed too often: what can be made again stays kept.
      return;
    }
    const std::size_t offered = drafts_->OfferedCount();
    drafts_->LeaveOwn();
    if (drafts_->OfferedCount() != offered) {
      OfferNext();
    }
  } else {
    drafts_->Write(state, Now());
  }
  written_ = state;
}

bool DraftKeeper::Keep(QString& reason) {
  return !drafts_ || Guarded(
                         editor_.screen, [this] { Write(); },
                         [&](const Error& error) { reason = ToQt(error.what()).simplified(); });
}

void DraftKeeper::WriteAndReport() {
  QString reason;
  if (Keep(reason)) {
    retry_.stop();
    editor_.notices->Report(kNotKept, {});
  } else {
    retry_.start(kRetryInterval);
    editor_.notices->Report(kNotKept, tr("What is typed is not kept as a draft. %1").arg(reason));
    // Other notices, such as possible slips, matter less.
    editor_.notices->ShowAbout(kNotKept);
  }
}

void DraftKeeper::Saved() {
  timer_.stop();
  retry_.stop();
  if (!drafts_) {
    // OK was pressed twice.
    return;
  }
  Guarded(
      editor_.screen, [this] { drafts_->RemoveAllOf(editor_.state()); },
      [](const Error& /*error*/) { /* The data are saved. The next editor removes the draft. */ });
  drafts_.reset();
}

void DraftKeeper::End() {
  timer_.stop();
  retry_.stop();
  if (drafts_) {
    // The user knows if it fails: see CalEditor::reject.
    QString reason;
    static_cast<void>(Keep(reason));
    drafts_.reset();
  }
  editor_.strip->Withdraw();
}

void DraftKeeper::OfferNext() {
  const Draft* draft = drafts_->Offered();
  if (draft == nullptr) {
    editor_.strip->Withdraw();
  } else {
    // Drafts of a file are all of its serial number.
    const std::string serial = draft->file.empty() ? draft->state.header.serialNumber : "";
    editor_.strip->Offer({.written = QDateTime::fromSecsSinceEpoch(draft->written),
                          .serial = ToQt(serial),
                          .count = drafts_->OfferedCount(),
                          .isOutdated = drafts_->IsOfferedOutdated()});
  }
}

void DraftKeeper::Restore() {
  Guarded(editor_.screen, [this] {
    MergedDraft draft = {.state = drafts_->Offered()->state};
    if (drafts_->IsOfferedOutdated()) {
      draft = Merged(*drafts_->Offered(), opened_, editor_.pointColumns());
    }
    RequireRoom(draft.withoutRoom);
    if (HoldsAllOf(opened_, draft.state)) {
      drafts_->RemoveOffered();
      editor_.notices->Report(kNewer,
                              tr("Everything that was typed in the draft is saved already."));
      OfferNext();
      return;
    }
    if (!HaveSameContent(editor_.state(), opened_)) {
      // It is offered afterwards.
      Write();
    }
    editor_.show(draft.state, [this, number = drafts_->TakenCount()](bool isShown) {
      TakeBack(number, isShown);
    });
    drafts_->TakeOffered();
    written_ = draft.state;
    ReportNewer(draft.kept);
    Changed();
    OfferNext();
  });
}

void DraftKeeper::TakeBack(std::size_t number, bool isShown) {
  if (!drafts_ || number >= drafts_->TakenCount()) {
    return;
  }
  Guarded(editor_.screen, [&] {
    isShown ? drafts_->TakeAgain(number) : drafts_->LeaveTaken(number);
    written_ = drafts_->Own() == nullptr ? opened_ : drafts_->Own()->state;
  });
  Changed();
  OfferNext();
}

void DraftKeeper::RequireRoom(std::size_t withoutRoom) {
  if (withoutRoom > 0) {
    throw Error(ErrorKind::Index,
                "The draft holds " + std::to_string(withoutRoom) +
                    (withoutRoom == 1 ? " point" : " points") +
                    " for which the table has no row left, because points were added to the data "
                    "after the draft was begun. Nothing was restored, and the draft stays. Delete "
                    "points that the data set does not need, save it, open it again, and choose "
                    "Restore.");
  }
}

void DraftKeeper::ReportNewer(std::size_t kept) {
  editor_.notices->Report(
      kNewer, kept == 0 ? QString()
              : kept == 1
                  ? tr("1 value was saved after the draft was begun, and stays.")
                  : tr("%1 values were saved after the draft was begun, and stay.").arg(kept));
}

void DraftKeeper::Discard() {
  Guarded(editor_.screen, [this] {
    drafts_->DiscardOffered();
    OfferNext();
  });
}

}  // namespace tarvell
