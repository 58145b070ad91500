#pragma once

#include <QDialog>
#include <functional>
#include <vector>

#include "host/export.h"

namespace goodsbook {

// Runs one action of a user: EAbort ends it silently, any other error is shown once (DISPINFO, kind 5).
// Nothing escapes. True when the action ran to its end.
GOODSBOOKHOST_EXPORT bool guarded(QWidget* parent, const std::function<void()>& action);

// Root of all screens: list screens, editors, dialogs, pickers. A screen is a window of its own, a modal
// dialog, or a page of the main window; it knows none of that (see ScreenFrame).
class GOODSBOOKHOST_EXPORT TFrm_Base : public QDialog {
  Q_OBJECT

 public:
  explicit TFrm_Base(QWidget* owner = nullptr);
  ~TFrm_Base() override;

  int Tag = 0;                          // the module number
  int screenId() const { return id_; }  // counts up over the program's life, never reused

  // All living screens, oldest first.
  static const std::vector<TFrm_Base*>& all();

  // What F1 shows: what this screen is for and its keys.
  virtual void Help();

 protected:
  // Last words before the screen goes, said once: when the screen is closed for good, and for one that its
  // owner takes along when the destructor of the overriding class calls lastWords().
  virtual void FormDestroy();
  void lastWords();
  virtual QString helpText() const;  // empty: the caption alone

  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  int id_;
  bool spoken_ = false;
};

// Who shows modeless screens. The owner given to a screen, or one of its parents, implements it; without one
// a screen is shown as a window of its own.
class GOODSBOOKHOST_EXPORT ScreenFrame {
 public:
  virtual ~ScreenFrame();
  virtual void place(TFrm_Base* screen) = 0;   // shows it and gives it the focus
  virtual void remove(TFrm_Base* screen) = 0;  // it is closing
};
GOODSBOOKHOST_EXPORT ScreenFrame* frameOf(QWidget* owner);

}  // namespace goodsbook
