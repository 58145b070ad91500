#include "host/print/label_dialog.h"

#include <QComboBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QPrinterInfo>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QVBoxLayout>

#include "host/U_function.h"
#include "host/forms/form_builder.h"
#include "host/print/label_preview.h"
#include "host/print/label_print.h"
#include "host/print/label_settings.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int resolutions[] = {203, 300, 600};

double numberIn(const QString& text, double otherwise) {
  bool ok = false;
  const double number = text.toDouble(&ok);
  return ok ? number : otherwise;
}

}  // namespace

LabelDialog::LabelDialog(QWidget* owner, const RecordSet& rows, const QString& title)
    : TFrm_Base_Dialog(owner), rows_(rows), title_(title) {
  setWindowTitle(tr("打印标签"));
  setObjectName(u"LabelDialog"_s);
  resize(980, 700);
  layouts_.setObjectName(u"Layouts"_s);
  layouts_.setParent(this);
  setLoading(true);
  buildChoices();
  buildPages();
  btn_ok->setText(tr("打印"));
  btn_ok->setToolTip(tr("打印 (F9)"));
  btn_Cancel->setText(tr("关闭"));
  btn_Cancel->setToolTip(tr("关闭 (Esc)"));
  FormCreate();
  const labelsettings::Choice last = labelsettings::lastChoice();
  printers_->setCurrentIndex(std::max(0, printers_->findData(last.printer)));
  readLayouts(last.layout);
  setLoading(false);
  showPrinter();
  connect(&layouts_, &RecordSet::afterScroll, this, [this] { guarded(this, [this] { choicesChanged(); }); });
  connect(printers_, &QComboBox::currentIndexChanged, this,
          [this] { guarded(this, [this] { showPrinter(); }); });
  connect(resolutions_, &QComboBox::currentIndexChanged, this, [this] { AllChange(); });
  connect(&checking_, &QTimer::timeout, this, [this] {
    guarded(this, [this] {
      check_->goOn();
      showFound();
    });
  });
}

void LabelDialog::buildChoices() {
  auto* columns = new QHBoxLayout;
  static_cast<QBoxLayout*>(body()->layout())->addLayout(columns);
  auto* area = new QWidget(body());
  columns->addWidget(area, 4);
  preview_ = new LabelPreview(body());
  preview_->setObjectName(u"Preview"_s);
  columns->addWidget(preview_, 5);

  FormBuilder form(*this, area);
  layoutGrid_ = new TDBGridEh(area);
  layoutGrid_->setObjectName(u"LayoutGrid"_s);
  layoutGrid_->setColumns({{.field = u"NAME"_s, .title = tr("标签样式"), .width = 280},
                           {.field = u"ORIGIN"_s, .title = tr("来源"), .width = 80}});
  layoutGrid_->setReadOnly(true);
  layoutGrid_->setSortable(false);
  layouts_.create({{.name = u"NAME"_s}, {.name = u"ORIGIN"_s}});
  layoutGrid_->setRecordSet(&layouts_);
  form.wide(layoutGrid_, 1);
  QPushButton* copy = makeButton(u"btn_Copy"_s, tr("复制样式到程序文件夹"));
  copy->setToolTip(tr("复制后可用文本编辑器修改，下次打印时即可选用"));
  onClick(copy, [this] { copyLayout(); });
  auto* copyRow = new QHBoxLayout;
  copyRow->addWidget(copy);
  copyRow->addStretch(1);
  form.wide(copyRow);
  form.fields({{.name = u"StartAt"_s,
                .label = tr("从第几个标签开始："),
                .kind = FieldKind::Number,
                .exit = [this] { checkNumber(u"StartAt"_s); },
                .places = 0,
                .width = 60,
                .hint = tr("用过一部分的标签纸")}});
  setText(u"StartAt"_s, u"1"_s);
  auto* printerRow = new QHBoxLayout;
  const auto combo = [&](const QString& name, const QString& caption) {
    auto* box = new QComboBox(area);
    box->setObjectName(name);
    auto* label = new QLabel(caption, area);
    label->setBuddy(box);
    printerRow->addWidget(label);
    printerRow->addWidget(box);
    return box;
  };
  printers_ = combo(u"Printer"_s, tr("打印机："));
  printers_->addItem(tr("PDF 文件"), QString());
  for (const QString& name : QPrinterInfo::availablePrinterNames()) printers_->addItem(name, name);
  printerRow->addSpacing(12);
  resolutions_ = combo(u"Resolution"_s, tr("分辨率："));
  for (const int dpi : resolutions) resolutions_->addItem(u"%1 dpi"_s.arg(dpi), dpi);
  printerRow->addStretch(1);
  form.wide(printerRow);
  const auto number = [this](const QString& name, const QString& caption, bool sameRow) {
    return FieldSpec{.name = name,
                     .label = caption,
                     .kind = FieldKind::Number,
                     .exit = [this, name] { checkNumber(name); },
                     .places = 2,
                     .width = 70,
                     .sameRow = sameRow};
  };
  form.fields({number(u"OffsetX"_s, tr("向右偏移(毫米)："), false),
               number(u"OffsetY"_s, tr("向下偏移(毫米)："), true),
               number(u"ScaleX"_s, tr("横向缩放(%)："), false),
               number(u"ScaleY"_s, tr("纵向缩放(%)："), true)});
  form.note(u"WarningTitle"_s, tr("请注意："));
  warnings_ = new QPlainTextEdit(area);
  warnings_->setObjectName(u"Warnings"_s);
  warnings_->setReadOnly(true);
  warnings_->setTabChangesFocus(true);
  warnings_->setMaximumHeight(110);
  form.wide(warnings_);
}

void LabelDialog::buildPages() {
  const auto add = [this](const QString& name, const QString& caption, const QString& hint,
                          const std::function<void()>& handler) {
    QPushButton* button = makeButton(name, caption);
    button->setToolTip(hint);
    onClick(button, handler);
    buttonRow()->insertWidget(buttonRow()->count() - 2, button);
  };
  add(u"btn_Test"_s, tr("打印测试页"), tr("标尺和标签边框，用来调整偏移和缩放"), [this] { printTest(); });
  auto* pages = new QLabel(this);
  pages->setObjectName(u"PageNumber"_s);
  buttonRow()->insertWidget(0, pages);
  const auto turn = [this](int index, const QString& name, const QString& caption, const QString& hint,
                           int by) {
    QPushButton* button = makeButton(name, caption);
    button->setToolTip(hint);
    onClick(button, [this, by] { showPage(page_ + by); });
    buttonRow()->insertWidget(index, button);
  };
  turn(0, u"btn_Previous"_s, tr("上一页"), tr("上一页 (PgUp)"), -1);
  turn(1, u"btn_Next"_s, tr("下一页"), tr("下一页 (PgDown)"), 1);
}

void LabelDialog::readLayouts(const QString& current) {
  files_ = labelLayouts(Session::current().programDir());
  layouts_.clear();
  for (const LabelLayoutFile& file : files_) {
    layouts_.append();
    layouts_.setValue(u"NAME"_s, file.name);
    layouts_.setValue(u"ORIGIN"_s, !file.error.isEmpty() ? tr("有错误")
                                   : file.shipped        ? tr("自带")
                                                         : tr("自定"));
    layouts_.post();
  }
  int row = 0;
  for (std::size_t i = 0; i < files_.size(); ++i) {
    if (QFileInfo(files_[i].path).fileName() == current) row = static_cast<int>(i);
  }
  layouts_.moveTo(row);
}

const LabelLayoutFile& LabelDialog::layoutFile() const {
  return files_[static_cast<std::size_t>(
      std::clamp(layouts_.currentRow(), 0, static_cast<int>(files_.size()) - 1))];
}

QString LabelDialog::printerName() const {
  return printers_->currentData().toString();
}

LabelPrinter LabelDialog::printer() const {
  constexpr double percent = 100;
  LabelPrinter printer;
  printer.dpi = resolutions_->currentData().toInt();
  printer.offset = {numberIn(text(u"OffsetX"_s), 0), numberIn(text(u"OffsetY"_s), 0)};
  const auto scale = [this](const QString& name) {
    return std::clamp(numberIn(text(name), percent) / percent, labelsettings::smallest,
                      labelsettings::largest);
  };
  printer.scale = {scale(u"ScaleX"_s), scale(u"ScaleY"_s)};
  return printer;
}

void LabelDialog::showPrinter() {
  const LabelPrinter kept = labelsettings::printerNamed(printerName());
  {
    const QScopedValueRollback quiet(loading_, true);
    resolutions_->setCurrentIndex(std::max(0, resolutions_->findData(kept.dpi)));
    const auto show = [this](const QString& name, double value) {
      setText(name, QString::number(value, 'g', 6));
    };
    show(u"OffsetX"_s, kept.offset.x());
    show(u"OffsetY"_s, kept.offset.y());
    show(u"ScaleX"_s, kept.scale.x() * 100);
    show(u"ScaleY"_s, kept.scale.y() * 100);
  }
  choicesChanged();
}

LabelJob LabelDialog::jobOf(const LabelLayout& layout) const {
  LabelJob made;
  made.layout = layout;
  made.printer = printer();
  made.firstPlace =
      std::clamp(static_cast<int>(numberIn(text(u"StartAt"_s), 1)) - 1, 0, layout.perSheet() - 1);
  made.count = rows_.rowCount();
  made.row = labelRowsOf(rows_);
  return made;
}

QString LabelDialog::wrongNumber(const QString& name) const {
  const QString typed = text(name).trimmed();
  if (typed.isEmpty()) return {};  // the usual value
  const bool isStart = name == u"StartAt"_s, isOffset = name.startsWith(u"Offset"_s);
  const int sheet = layoutFile().layout.perSheet();
  if (isStart && sheet == 1) return {};  // not asked for
  constexpr double percent = 100;
  const double least = isStart ? 1 : isOffset ? -labelsettings::farthest : labelsettings::smallest * percent;
  const double most = isStart ? sheet : isOffset ? labelsettings::farthest : labelsettings::largest * percent;
  bool ok = false;
  const double number = typed.toDouble(&ok);
  if (ok && number >= least && number <= most) return {};
  return tr("%1应在 %2 到 %3 之间!").arg(labelOf(elementNamed(name))).arg(least).arg(most);
}

QString LabelDialog::wrongNumber(QWidget** field) const {
  for (const QString& name : {u"StartAt"_s, u"OffsetX"_s, u"OffsetY"_s, u"ScaleX"_s, u"ScaleY"_s}) {
    const QString wrong = wrongNumber(name);
    if (wrong.isEmpty()) continue;
    if (field) *field = elementNamed(name);
    return wrong;
  }
  return {};
}

void LabelDialog::checkNumber(const QString& name) {
  const QString wrong = wrongNumber(name);
  if (wrong.isEmpty()) return;
  DISPINFO(wrong, 5);
  throw EAbort();
}

LabelJob LabelDialog::job() {
  const LabelLayoutFile& file = layoutFile();
  if (!file.error.isEmpty()) {
    DISPINFO(file.error, 5);
    throw EAbort();
  }
  QWidget* field = nullptr;
  if (const QString wrong = wrongNumber(&field); !wrong.isEmpty()) {
    DISPINFO(wrong, 5);
    focusFirst(field);
    throw EAbort();
  }
  return jobOf(file.layout);
}

void LabelDialog::AllChange() {
  if (!loading()) guarded(this, [this] { choicesChanged(); });
}

void LabelDialog::choicesChanged() {
  const LabelLayoutFile& file = layoutFile();
  elementNamed(u"StartAt"_s)->setEnabled(file.layout.perSheet() > 1);
  checkAnew();
  if (file.error.isEmpty()) {
    showPage(page_);
  } else {
    preview_->showText(file.error);
    label(u"PageNumber"_s)->clear();
  }
}

void LabelDialog::checkAnew() {
  const LabelLayoutFile& file = layoutFile();
  const QString wrong = file.error.isEmpty() ? wrongNumber() : file.error;
  check_.reset();
  checking_.stop();
  if (wrong.isEmpty()) {
    check_ = std::make_unique<LabelCheck>(jobOf(file.layout));
    check_->goOn();
    if (!check_->isDone()) checking_.start();
    showFound();
  } else {
    label(u"WarningTitle"_s)->setText(tr("请注意："));
    warnings_->setPlainText(wrong);
  }
}

void LabelDialog::showFound() {
  const LabelWarnings& found = check_->warnings();
  const bool done = check_->isDone();
  if (done) checking_.stop();
  label(u"WarningTitle"_s)
      ->setText(done ? tr("请注意：")
                     : tr("请注意：（已检查 %1 / %2 个标签）").arg(check_->checked()).arg(rows_.rowCount()));
  const QString text = !found.isEmpty() ? found.all() : done ? tr("没有问题") : tr("正在检查…");
  if (text == warnings_->toPlainText()) return;
  QScrollBar* bar = warnings_->verticalScrollBar();  // somebody may be reading
  const int place = bar->value();
  warnings_->setPlainText(text);
  bar->setValue(place);
}

void LabelDialog::showPage(int page) {
  if (!layoutFile().error.isEmpty()) return;
  const LabelJob shown = jobOf(layoutFile().layout);
  page_ = std::clamp(page, 0, shown.pageCount() - 1);
  preview_->show(shown, page_);
  label(u"PageNumber"_s)
      ->setText(tr("第 %1 页 / 共 %2 页，%3 个标签").arg(page_ + 1).arg(shown.pageCount()).arg(shown.count));
}

void LabelDialog::copyLayout() {
  const QString path = copyLabelLayout(layoutFile(), Session::current().programDir());
  readLayouts(QFileInfo(path).fileName());
  DISPINFO(tr("已复制到 %1，可用文本编辑器修改。").arg(path), 5);
}

PrintPlace LabelDialog::place() {
  PrintPlace to;
  Desktop& desktop = Session::current().desktop();
  to.pdf = desktop.takePrintTarget();
  to.printer = printerName();
  if (to.pdf.isEmpty() && to.printer.isEmpty()) {
    to.pdf = desktop.saveFile(this, tr("标签输出到 PDF 文件"), title_ + u".pdf"_s, tr("PDF 文件 (*.pdf)"));
    if (to.pdf.isEmpty()) throw EAbort();
  }
  return to;
}

void LabelDialog::btn_okClick() {
  TFrm_Base_Dialog::btn_okClick();
  const LabelJob printed = job();
  remember();
  const LabelWarnings found = printLabelJob(this, title_, printed, place());
  if (!found.isEmpty() && found.all() != warnings_->toPlainText())
    DISPINFO(tr("标签已印出，请注意：\n%1").arg(found.summary()), 5);
  setModalResult(1);
}

void LabelDialog::printTest() {
  const LabelJob printed = job();
  remember();
  printTestPage(this, printed, place());
}

void LabelDialog::remember() const {
  if (wrongNumber().isEmpty()) labelsettings::rememberPrinter(printerName(), printer());
  labelsettings::rememberChoice({QFileInfo(layoutFile().path).fileName(), printerName()});
}

void LabelDialog::FormClose() {
  remember();
  TFrm_Base_Dialog::FormClose();
}

QString LabelDialog::helpText() const {
  return windowTitle() + u"\n\n"_s +
         tr("F9  打印\nPgUp / PgDown  翻页\nEsc  关闭\n\n标签样式是程序文件夹里的文本文件（*.label），复制后可以修改。");
}

void LabelDialog::FormKeyDown(QKeyEvent* event) {
  const bool turns = event->modifiers() == Qt::NoModifier && focusWidget() != warnings_;
  if (turns && event->key() == Qt::Key_PageUp) {
    event->accept();
    showPage(page_ - 1);
  } else if (turns && event->key() == Qt::Key_PageDown) {
    event->accept();
    showPage(page_ + 1);
  } else {
    TFrm_Base_Dialog::FormKeyDown(event);
  }
}

}  // namespace goodsbook
