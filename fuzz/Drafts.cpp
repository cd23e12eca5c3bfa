// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <string>
#include <vector>

#include "FuzzTarget.h"
#include "MemoryPlatform.h"
#include "core/caldata/DataSetDrafts.h"
#include "core/caldata/Draft.h"
#include "core/caldata/Models.h"

/// Drafts. An input is the file of one, as a damaged disk or another program may leave it.
namespace tarvell::fuzz {
namespace {

constexpr const char* kPlace = "/user/drafts/PX12A-new-1.draft";

/// A damaged draft is kept under another name, a whole one is offered.
void CheckFinding(const std::string& bytes, bool isOfNewData) {
  MemoryPlatform disk;
  disk.PutAt(kPlace, bytes);
  const DataSetDrafts folder("PX12A", "", 0);
  Require(isOfNewData == (folder.OfferedCount() == 1), "exactly a whole draft is offered");
  Require(isOfNewData == folder.Damaged().empty(), "exactly a damaged draft is reported");
  const std::string* kept = disk.FindAt(isOfNewData ? kPlace : "/user/drafts/PX12A-new-1.damaged");
  Require(kept != nullptr && *kept == bytes, "the file is kept");
}

/// Whatever the draft holds, it is put into the data of every model, or left out.
void CheckRestoring(const EditorState& state) {
  for (const Model& model : kModels) {
    if (model.create != nullptr) {
      const std::unique_ptr<cifCaldata> data = model.create();
      RestorePages(state, model.hasOption, *data);
      const std::vector<DraftPage> pages = PagesOf(*data, model.hasOption);
      RestorePages({.pages = pages}, model.hasOption, *data);
      Require(PagesOf(*data, model.hasOption) == pages, "what is restored stays the same");
    }
  }
}

}  // namespace

void Run(Input input) {
  const std::string bytes = input.Rest();
  const std::optional<Draft> draft = DraftFrom(bytes);
  CheckFinding(bytes, draft && draft->model == "PX12A" && draft->file.empty());
  if (draft) {
    Require(DraftFrom(DraftBytes(*draft)) == draft, "a draft is read back");
    CheckRestoring(draft->state);
  }
}

}  // namespace tarvell::fuzz
