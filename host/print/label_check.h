#pragma once

#include <QImage>

#include "host/export.h"
#include "host/print/label_pages.h"

namespace goodsbook {

// Tells which labels the printer's offset and scale push over the edge of the paper, and how far.
GOODSBOOKHOST_EXPORT void tellOffPaper(const LabelJob& job, LabelWarnings& warnings);

// Finds what there is to say of all labels without painting them anywhere, in slices, so that a user can go
// on in the meantime. The rows of the job must not change until it is done.
class GOODSBOOKHOST_EXPORT LabelCheck {
 public:
  explicit LabelCheck(LabelJob job);
  LabelCheck(const LabelCheck&) = delete;
  LabelCheck& operator=(const LabelCheck&) = delete;

  void goOn();  // the next slice, some hundreds of labels
  bool isDone() const { return next_ == job_.count; }
  int checked() const { return next_; }
  const LabelWarnings& warnings() const { return warnings_; }

 private:
  const LabelJob job_;
  LabelPainter labels_;
  QImage aside_;
  LabelWarnings warnings_;
  LabelRow last_;
  int next_ = 0;
};

}  // namespace goodsbook
