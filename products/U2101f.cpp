#include "products/U2101f.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>

#include "host/U_function.h"
#include "host/forms/form_builder.h"
#include "host/lookup/pickers.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

QString contains(const QString& text) {
  return u" ((D1801DW.TM LIKE '%"_s + text + u"%') or (D1801.WL_ID LIKE '%"_s + text +
         u"%') or (D1801.WL_name LIKE '%"_s + text + u"%') or (D1801.PYM LIKE '%"_s + text + u"%'))"_s;
}

QString equals(const QString& text) {
  return u" ((D1801DW.TM='"_s + text + u"') or (D1801.WL_ID='"_s + text + u"') or (D1801.WL_name='"_s + text +
         u"') or (D1801.PYM='"_s + text + u"'))"_s;
}

}  // namespace

TF2101F::TF2101F(QWidget* owner) : TFrm_Sys_Filter(owner) {
  setWindowTitle(tr("商品筛选"));
  FormBuilder form(*this);
  form.fields({
      {.name = u"Edit1"_s,
       .label = tr("编码/条码/品名/拼音码"),
       .limit = 20,
       .upper = true,
       .width = 220,
       .labelName = u"Label1"_s},
      {.name = u"Edit3"_s, .label = tr("规    格"), .limit = 40, .width = 220, .labelName = u"Label3"_s},
      {.name = u"CLASS_ID"_s,
       .label = tr("商品类型"),
       .kind = FieldKind::Lookup,
       .limit = 4,
       .check = FieldCheck::Id,
       .nameLabel = u"CLASS_NAME"_s,
       .labelName = u"Label4"_s},
      {.name = u"YS"_s, .label = tr("有效"), .kind = FieldKind::Check},
      {.name = u"NO"_s, .label = tr("失效"), .kind = FieldKind::Check, .sameRow = true},
  });
  form.note(u"Label5"_s, tr("F3  包含所录内容    F4  等于所录内容（只按第一项检索）"));
  btn_1 = makeButton(u"btn_1"_s, tr("今天改动"));
  btn_2 = makeButton(u"btn_2"_s, tr("昨天改动"));
  auto* days = new QHBoxLayout;
  days->setSpacing(6);
  days->addStretch(1);
  days->addWidget(btn_1);
  days->addWidget(btn_2);
  form.wide(days);
  setChecked(u"YS"_s, true);
  int tag = 0;
  for (QPushButton* button : {btn_1, btn_2}) {
    button->setProperty("Tag", tag++);
    onClick(button, [this, button] { btn_1Click(button->property("Tag").toInt()); });
  }
  (new TFrm_Sys_LINK_CL(this))->init(lookupEdit(u"CLASS_ID"_s));
  FormCreate();
}

void TF2101F::InitFocu() {
  edit(u"Edit1"_s)->setFocus(Qt::OtherFocusReason);
}

void TF2101F::btn_okClick() {
  CheckId(edit(u"CLASS_ID"_s));  // Esc left it unchecked, and it stays from one opening to the next
  TFrm_Sys_Filter::btn_okClick();
  const bool valid = isChecked(u"YS"_s);
  const bool invalid = isChecked(u"NO"_s);
  if (!valid && !invalid) {
    DISPINFO(tr("有效和无效必须选定一个"), 5);
    elementNamed(u"YS"_s)->setFocus(Qt::OtherFocusReason);
    return;
  }
  resetCondition();
  const QString any = text(u"Edit1"_s);
  const QString specification = text(u"Edit3"_s);
  const QString category = text(u"CLASS_ID"_s);
  if (!any.trimmed().isEmpty()) conditionText = contains(any.trimmed());
  Condition_t(u"LIKE"_s, u"D1801.WL_GG"_s, specification);
  Condition_t(u"="_s, u"D1801.CLASS_ID"_s, category);
  if (!any.trimmed().isEmpty()) displayText += u" ●"_s + text(u"Label1"_s) + tr(" 包含 ") + any;
  if (!specification.trimmed().isEmpty()) displayText += u" ●"_s + tr("规格") + tr(" 包含 ") + specification;
  if (!category.trimmed().isEmpty()) displayText += u" ●"_s + text(u"Label4"_s) + u'=' + category;
  if (valid != invalid) Condition_t(u"="_s, u"D1801.WL_YS"_s, boltos(valid));
  setModalResult(QDialog::Accepted);
}

void TF2101F::FormKeyDown(QKeyEvent* event) {
  if (focusWidget() == elementNamed(u"Edit1"_s) && event->modifiers() == Qt::NoModifier &&
      Edit1KeyDown(event->key())) {
    event->accept();
    return;
  }
  TFrm_Sys_Filter::FormKeyDown(event);
}

bool TF2101F::Edit1KeyDown(int key) {
  const QString typed = text(u"Edit1"_s);
  if (typed.trimmed().isEmpty() || (key != Qt::Key_F3 && key != Qt::Key_F4)) return false;
  const bool exact = key == Qt::Key_F4;
  conditionText = exact ? equals(typed.trimmed()) : contains(typed.trimmed());
  displayText = text(u"Label1"_s) + (exact ? tr(" 等于 ") : tr(" 包含 ")) + typed;
  setModalResult(QDialog::Accepted);
  return true;
}

void TF2101F::btn_1Click(int tag) {
  const QDate today = Session::current().desktop().now().date();
  const QString from = (tag == 0 ? today : today.addDays(-1)).toString(u"yyyy-MM-dd"_s);
  const QString before = (tag == 0 ? today.addDays(1) : today).toString(u"yyyy-MM-dd"_s);
  const auto within = [&](const QString& column) {
    return u"(("_s + column + u">='"_s + from + u"') AND ("_s + column + u"<'"_s + before + u"'))"_s;
  };
  conditionText = u"  "_s + within(u"d1801.bdate"_s) + u" or  "_s + within(u"d1801.edate"_s) + u' ';
  displayText = tag == 0 ? tr("  【今天改动】 ") : tr("  【昨天改动】 ");
  setModalResult(QDialog::Accepted);
}

}  // namespace goodsbook
