#include "host/lookup/picker.h"

#include <QApplication>
#include <QFrame>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QStyleOptionViewItem>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "host/controls/TDBGridEh.h"
#include "host/controls/drop_place.h"
#include "host/lookup/match.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

constexpr qsizetype blanksOfLevel = 4;

// One row for the list: code, name, initials.
class ListRow : public engine::Row {
 public:
  explicit ListRow(const LookupTable::Row& row)
      : texts_{row.id.toUtf8(), row.name.toUtf8(), row.initials.toUtf8()} {}
  bool isNull(int) const override { return false; }
  std::int64_t integer(int) const override { return 0; }
  double real(int) const override { return 0; }
  std::string_view text(int column) const override {
    const QByteArray& text = texts_[static_cast<std::size_t>(column)];
    return {text.constData(), static_cast<std::size_t>(text.size())};
  }
  std::span<const std::byte> blob(int) const override { return {}; }

 private:
  std::array<QByteArray, 3> texts_;
};

int rank(const LookupTable::Row& row, const QString& typed) {
  return matchRank(row.id, row.name, row.initials, typed);
}

}  // namespace

LookupPicker::LookupPicker(const LookupTable& table, QWidget* owner, RecordSet* rows)
    : TFrm_Base(owner),
      table_(table),
      rows_(rows != nullptr ? rows : new RecordSet(this)),
      search_(new TCustomDBEditEh(this)),
      grid_(new TDBGridEh(this)) {
  build();
}

LookupPicker::~LookupPicker() {
  // Hiding moves the focus, and nothing of this list may answer to that any more.
  disconnect(qApp, nullptr, this, nullptr);
  auto* lookupEdit = qobject_cast<TExtEdit*>(edit());
  if (lookupEdit != nullptr && lookupEdit->lookup() == &table_) lookupEdit->setLookup(nullptr);
}

void LookupPicker::build() {
  setWindowTitle(table_.caption);
  setWindowFlags(Qt::Tool | Qt::FramelessWindowHint);
  setModal(false);
  if (rows_->objectName().isEmpty()) rows_->setObjectName(u"AdoQry_Tmp"_s);
  search_->setObjectName(u"Edit1"_s);
  search_->setPlaceholderText(tr("代号、名称或拼音首字母"));
  search_->setClearButtonEnabled(true);
  search_->installEventFilter(this);
  grid_->setObjectName(u"DBGridEh"_s);
  grid_->setReadOnly(true);
  grid_->setFocusPolicy(Qt::ClickFocus);
  GridColumn code{.field = table_.idField, .title = table_.idTitle, .width = 90};
  GridColumn name{.field = table_.nameField, .title = table_.nameTitle, .width = 200};
  std::vector<GridColumn> columns{code, name};
  if (!table_.initialsField.isEmpty()) {
    columns.push_back({.field = table_.initialsField, .title = tr("拼音码"), .width = 80, .visible = false});
  }
  grid_->setColumns(columns);
  grid_->setRecordSet(rows_);
  grid_->setDrawColumnCell([this](int row, const QString& field, QStyleOptionViewItem& option) {
    if (row < static_cast<int>(levels_.size()) && field.compare(table_.nameField, Qt::CaseInsensitive) == 0) {
      option.text.prepend(QString(blanksOfLevel * levels_[static_cast<std::size_t>(row)], u' '));
    }
  });
  grid_->horizontalHeader()->setStretchLastSection(true);
  auto* frame = new QFrame(this);
  frame->setFrameShape(QFrame::StyledPanel);
  auto* whole = new QVBoxLayout(this);
  whole->setContentsMargins({});
  whole->addWidget(frame);
  auto* column = new QVBoxLayout(frame);
  column->setContentsMargins(2, 2, 2, 2);
  column->setSpacing(2);
  column->addWidget(search_);
  column->addWidget(grid_);
  resize(360, 320);
  connect(search_, &QLineEdit::textEdited, this, [this](const QString& text) { narrow(text); });
  connect(grid_, &TDBGridEh::rowDoubleClicked, this, [this] { take(); });
  connect(grid_, &TDBGridEh::keyPressed, this, [this](QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Escape) {
      keyPressEvent(event);
    } else if (!event->text().isEmpty() && event->text().at(0).isPrint()) {
      search_->setFocus();
      QApplication::sendEvent(search_, event);
    }
  });
  connect(qApp, &QApplication::focusChanged, this,
          [this](const QWidget*, const QWidget* now) { focusWent(now); });
}

void LookupPicker::attach(TExtEdit* edit, const QString& condition) {
  dropBelow(edit, condition);
  edit->setPicker(this);
  edit->setLookup(&table_);
}

void LookupPicker::dropBelow(QLineEdit* edit, const QString& condition) {
  anchor_ = edit;
  condition_ = condition;
}

void LookupPicker::showForCell(TDBGridEh* grid, const QString& codeField, const QString& nameField,
                               const QString& condition) {
  anchor_ = grid;
  condition_ = condition;
  target_ = {.rows = grid->recordSet(), .codeField = codeField, .nameField = nameField};
  setVisible(true);
}

QLineEdit* LookupPicker::edit() const {
  return qobject_cast<QLineEdit*>(anchor_.data());
}

QString LookupPicker::code() const {
  if (const QLineEdit* edit = this->edit()) return edit->text().trimmed();
  return target_.rows != nullptr ? target_.rows->text(target_.codeField) : QString();
}

void LookupPicker::setVisible(bool visible) {
  if (visible == isVisible()) {
    if (visible) activateWindow();
    return;
  }
  QWidget* below = anchor_;
  if (below == nullptr) {
    if (!visible) QDialog::setVisible(false);
    return;
  }
  if (!visible) {
    below->window()->removeEventFilter(this);
    QDialog::setVisible(false);
    return;
  }
  if (!guarded(this, [this] { prepare(); })) return;
  below->window()->installEventFilter(this);
  QDialog::setVisible(true);
  if (const auto* grid = qobject_cast<TDBGridEh*>(below)) {
    move(dropPlace(*grid->viewport(), size(), grid->visualRect(grid->currentIndex())));
  } else {
    move(dropPlace(*below, size(), below->rect()));
  }
  raise();
  activateWindow();
  search_->setFocus(Qt::PopupFocusReason);
}

void LookupPicker::prepare() {
  all_ = table_.rows(condition_);
  grid_->setEmptyText(all_.empty() ? tr("还没有可选的%1，请先建立").arg(table_.caption)
                                   : tr("没有符合的记录"));
  preselect(code());
}

void LookupPicker::preselect(const QString& code) {
  const auto stands = [&](bool asCode) {
    return std::any_of(all_.begin(), all_.end(), [&](const LookupTable::Row& row) {
      const int found = rank(row, code);
      return asCode ? found == 0 : found >= 0;
    });
  };
  const bool isCode = !code.isEmpty() && stands(true);
  const bool isSearch = !code.isEmpty() && !isCode && stands(false);
  search_->setText(isSearch ? code : QString());
  narrow(search_->text());
  if (isCode) rows_->locate(table_.idField, code);
}

void LookupPicker::narrow(const QString& text) {
  const QString typed = text.trimmed();
  std::vector<const LookupTable::Row*> chosen;
  levels_.clear();
  if (typed.isEmpty()) {
    for (const LookupTable::Row& row : all_) {
      chosen.push_back(&row);
      levels_.push_back(row.level);
    }
  } else {
    std::vector<std::pair<int, const LookupTable::Row*>> ranked;
    for (const LookupTable::Row& row : all_) {
      if (const int found = rank(row, typed); found >= 0) ranked.emplace_back(found, &row);
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& [found, row] : ranked) chosen.push_back(row);
  }
  fill(chosen);
}

void LookupPicker::fill(const std::vector<const LookupTable::Row*>& chosen) {
  std::vector<engine::Column> columns{{table_.idField.toStdString(), engine::Type::Text, 0},
                                      {table_.nameField.toStdString(), engine::Type::Text, 0}};
  if (!table_.initialsField.isEmpty())
    columns.push_back({table_.initialsField.toStdString(), engine::Type::Text, 0});
  rows_->beginLoad(columns);
  for (const LookupTable::Row* row : chosen) rows_->appendLoaded(ListRow(*row));
  rows_->endLoad();
}

void LookupPicker::step(int key) {
  const int page = std::max(1, grid_->viewport()->height() / std::max(1, grid_->rowHeight(0)) - 1);
  const int row = rows_->currentRow();
  switch (key) {
    case Qt::Key_Up:
      rows_->moveTo(row - 1);
      break;
    case Qt::Key_Down:
      rows_->moveTo(row + 1);
      break;
    case Qt::Key_PageUp:
      rows_->moveTo(row - page);
      break;
    default:
      rows_->moveTo(row + page);
      break;
  }
}

void LookupPicker::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    take();
  } else if (event->key() == Qt::Key_Escape) {
    leave(false);
  } else {
    TFrm_Base::keyPressEvent(event);
    return;
  }
  event->accept();
}

bool LookupPicker::eventFilter(QObject* watched, QEvent* event) {
  if (watched == search_ && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown) {
      step(key);
      return true;
    }
  } else if (event->type() == QEvent::Hide && anchor_ != nullptr && watched == anchor_->window()) {
    hide();
  }
  return TFrm_Base::eventFilter(watched, event);
}

QString LookupPicker::helpText() const {
  return tr("录入代号、名称或拼音首字母的一部分查找。\n↑ ↓ 移动，回车或双击选取，Esc 关闭。");
}

void LookupPicker::focusWent(const QWidget* now) {
  // The edit may have the focus while the list shows: Esc there closes the list and not the screen.
  if (isVisible() && now != nullptr && now != anchor_ && now->window() != this) hide();
}

void LookupPicker::take() {
  if (rows_->isEmpty() || anchor_ == nullptr) return;
  const QString code = rows_->text(table_.idField);
  const QString name = rows_->text(table_.nameField);
  guarded(this, [&] {
    if (QLineEdit* edit = this->edit()) {
      edit->selectAll();
      edit->insert(code);
    }
    auto* lookupEdit = qobject_cast<TExtEdit*>(edit());
    QLabel* label = target_.nameLabel;
    if (label == nullptr && lookupEdit != nullptr) label = lookupEdit->nameLabel();
    if (label != nullptr) label->setText(name);
    if (target_.nameEdit != nullptr) target_.nameEdit->setText(name);
    if (target_.rows != nullptr) {
      if (!target_.codeField.isEmpty()) target_.rows->setValue(target_.codeField, code);
      if (!target_.nameField.isEmpty()) target_.rows->setValue(target_.nameField, name);
    }
    Q_EMIT picked(code, name);
    leave(true);
  });
}

void LookupPicker::leave(bool onward) {
  hide();
  const QPointer<QWidget> back = anchor_;
  if (back == nullptr) return;
  back->window()->activateWindow();
  back->setFocus(Qt::OtherFocusReason);
  if (!onward) return;
  if (back->hasFocus()) {
    goOn();
    return;
  }
  // The screen becomes active with one of the next events. What its edit checks on being left needs the focus
  // there first.
  auto* once = new QObject(this);
  connect(qApp, &QApplication::focusChanged, once, [this, once, back](const QWidget*, const QWidget* now) {
    if (now == nullptr) return;
    once->deleteLater();
    disconnect(qApp, nullptr, once, nullptr);
    if (now == back) QTimer::singleShot(0, this, [this] { goOn(); });
  });
}

void LookupPicker::goOn() {
  QKeyEvent next(QEvent::KeyPress, edit() != nullptr ? Qt::Key_Tab : Qt::Key_Return, Qt::NoModifier);
  if (anchor_ != nullptr && anchor_->hasFocus()) QApplication::sendEvent(anchor_, &next);
}

}  // namespace goodsbook
