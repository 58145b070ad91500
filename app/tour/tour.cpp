#include "app/tour/tour.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QPixmap>
#include <QTabWidget>
#include <QTemporaryDir>

#include "app/appearance.h"
#include "app/driver/driver.h"
#include "app/driver/elements.h"
#include "app/main_window/about_box.h"
#include "app/main_window/main_window.h"
#include "app/modules.h"
#include "app/sign_in/password_dialog.h"
#include "host/U_function.h"
#include "host/U_glo.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

constexpr QSize usual{1180, 760};
constexpr QSize small{800, 560};

// Actions that show no window of their own, or only one of the system's.
bool staysInList(const QString& action) {
  static const QStringList names{u"Act_Delete"_s, u"Act_Refresh"_s, u"Act_Print"_s, u"Act_Export"_s,
                                 u"Act_Close"_s,  u"Act_Locate"_s,  u"Act_hb"_s};
  return names.contains(action);
}

QString shortName(const QString& action) {
  return action.mid(action.indexOf(u'_') + 1).toLower();
}

}  // namespace

Tour::Tour(Driver& driver, MainWindow& window, const QDir& folder)
    : driver_(driver), window_(window), folder_(folder), client_(driver) {}

void Tour::run() {
  resize(usual);
  onGui([this] { pictureOf(window_, u"main-empty"_s); });
  for (const ModuleGroup& group : moduleGroups()) {
    for (const Module& module : group.modules) visitModule(module.number);
  }
  visitProductDialogs();
  visitLabels();
  visitWarehouseRights();
  visitQuickEditors();
  visitImport();
  picturesOfWindow();
}

void Tour::visitModule(int module) {
  onGui([&] { window_.openModule(module, true); });
  send({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 0}});
  bool opened = false;
  onGui([&] {
    const auto* screen = qobject_cast<TFrm_Base*>(window_.tabs()->currentWidget());
    opened = screen && screen->Tag == module;
  });
  if (!opened) return;
  opened_ << module;
  const QString name = QString::number(module);
  for (const QJsonValue& element : send({{u"cmd"_s, u"elements"_s}})["elements"_L1].toArray()) {
    if (element["name"_L1] == "DBGridEh"_L1)
      send({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"DBGridEh"_s}, {u"limit"_s, 1}});
  }
  onGui([&] { pictureOf(window_, name); });
  resize(small);
  onGui([&] { pictureOf(window_, name + u"-small"_s); });
  resize(usual);
  visitActions(name);
  onGui([&] { window_.tabs()->currentWidget()->close(); });
}

void Tour::visitActions(const QString& screen) {
  const QJsonArray actions = send({{u"cmd"_s, u"actions"_s}})["actions"_L1].toArray();
  for (const QJsonValue& action : actions) {
    const QString name = action["name"_L1].toString();
    if (name.startsWith("Act_"_L1) && action["enabled"_L1].toBool() && action["visible"_L1].toBool() &&
        !staysInList(name)) {
      visitAction(screen, name);
    }
  }
}

void Tour::visitAction(const QString& screen, const QString& action) {
  const QJsonValue before = front()["id"_L1];
  send({{u"cmd"_s, u"action"_s}, {u"name"_s, action}});
  if (front()["id"_L1] == before) return;
  const QString name = screen + u'-' + shortName(action);
  dialogPictures(name);
  visitPickers(name);
  closeFront();
  if (front()["id"_L1] != before) problems_ << name;
}

void Tour::visitPickers(const QString& dialog) {
  const QJsonValue before = front()["id"_L1];
  const QJsonArray elements = send({{u"cmd"_s, u"elements"_s}})["elements"_L1].toArray();
  for (const QJsonValue& element : elements) {
    const QString name = element["name"_L1].toString();
    const bool opensPicker =
        name.endsWith(".button"_L1) && element["enabled"_L1].toBool() && element["visible"_L1].toBool();
    if (!opensPicker) continue;
    send({{u"cmd"_s, u"click"_s}, {u"element"_s, name}});
    if (front()["id"_L1] == before) continue;
    picture(dialog + u'-' + name.section(u'.', 0, 0).toLower());
    closeFront();
  }
}

// The full editor with one unit and with several, what it opens, the filter, and the pictures before
// printing.
void Tour::visitProductDialogs() {
  constexpr int products = 101;
  if (!opened_.contains(products)) return;
  QString editor;
  onGui([&] {
    editor = std::exchange(GPARAM23, u"1"_s);
    window_.openModule(products, true);
  });
  const QJsonObject listed = send({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"DBGridEh"_s}, {u"limit"_s, 1}});
  const auto opens = [this](const QJsonObject& command, const QString& name, const auto& within) {
    const QJsonValue before = front()["id"_L1];
    send(command);
    if (front()["id"_L1] == before) {
      problems_ << name;
      return;
    }
    dialogPictures(name);
    within();
    closeFront();
  };
  const auto nothing = [] {};
  const auto action = [](const QString& name) {
    return QJsonObject{{u"cmd"_s, u"action"_s}, {u"name"_s, name}};
  };
  const auto cell = [](const QString& field) {
    return QJsonObject{
        {u"cmd"_s, u"cellclick"_s}, {u"element"_s, u"DBGridEh1"_s}, {u"row"_s, 0}, {u"field"_s, field}};
  };
  opens(action(u"Act_Filter"_s), u"101-filter"_s, nothing);
  opens(action(u"Act_Edit"_s), u"101-edit"_s, [&] {
    opens({{u"cmd"_s, u"press"_s}, {u"keys"_s, u"F11"_s}}, u"101-history"_s, nothing);
    send({{u"cmd"_s, u"press"_s}, {u"keys"_s, u"F6"_s}});
    dialogPictures(u"101-units"_s);
    opens(cell(u"多条码"_s), u"101-barcodes"_s, nothing);
    opens(cell(u"区域售价"_s), u"101-regional-prices"_s, nothing);
    send({{u"cmd"_s, u"press"_s}, {u"keys"_s, u"F6"_s}});
  });
  constexpr int mostWithPictures = 300;  // the list shows the pictures of no more
  if (listed["count"_L1].toInt() > mostWithPictures) {
    send(action(u"Act_Filter"_s));
    send({{u"cmd"_s, u"type"_s},
          {u"element"_s, u"Edit1"_s},
          {u"text"_s, listed["rows"_L1].toArray().at(0)["WL_ID"_L1]}});
    send({{u"cmd"_s, u"press"_s}, {u"keys"_s, u"F4"_s}});
  }
  opens(action(u"Act_Other"_s), u"101-pictures"_s, [&] {
    opens({{u"cmd"_s, u"press"_s}, {u"keys"_s, u"F2"_s}}, u"101-pictures-print"_s, nothing);
  });
  onGui([&] {
    window_.tabs()->currentWidget()->close();
    GPARAM23 = editor;
  });
}

// The dialog that makes labels, the list with some, and the one that prints them.
void Tour::visitLabels() {
  constexpr int labels = 102;
  if (!opened_.contains(labels)) return;
  onGui([&] { window_.openModule(labels, true); });
  send({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 0}});
  dialogPictures(u"102-tags"_s);
  send({{u"cmd"_s, u"click"_s}, {u"element"_s, u"BTN_TM"_s}});
  send({{u"cmd"_s, u"click"_s}, {u"element"_s, u"Button3"_s}});
  onGui([&] { pictureOf(window_, u"102-labels"_s); });
  const QJsonValue list = front()["id"_L1];
  send({{u"cmd"_s, u"action"_s}, {u"name"_s, u"Act_Print"_s}});
  if (front()["id"_L1] != list) {
    dialogPictures(u"102-print"_s);
    closeFront();
  }
  send({{u"cmd"_s, u"action"_s}, {u"name"_s, u"Act_Filter"_s}});  // nothing of it stays in the next tour
  onGui([&] { window_.tabs()->currentWidget()->close(); });
}

// The users' rights on a warehouse, where they are in use.
void Tour::visitWarehouseRights() {
  constexpr int warehouses = 107;
  if (!opened_.contains(warehouses)) return;
  onGui([&] {
    setGlobal(u"G_CHKCK"_s, u"1"_s);
    window_.openModule(warehouses, true);
  });
  send({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 0}});
  const QJsonValue list = front()["id"_L1];
  send({{u"cmd"_s, u"action"_s}, {u"name"_s, u"Act_Edit"_s}});
  if (front()["id"_L1] != list) {
    const QJsonValue editor = front()["id"_L1];
    send({{u"cmd"_s, u"click"_s}, {u"element"_s, u"BTN_QS"_s}});
    if (front()["id"_L1] != editor) {
      dialogPictures(u"107-rights"_s);
      closeFront();
    }
    closeFront();
  }
  onGui([&] {
    setGlobal(u"G_CHKCK"_s, u"0"_s);
    window_.tabs()->currentWidget()->close();
  });
}

// As the documents of other modules open them, and the prompt of a barcode that is known already.
void Tour::visitQuickEditors() {
  const QJsonArray known =
      send({{u"cmd"_s, u"sql"_s}, {u"text"_s, u"select top 1 TM from D1801DW where TM<>''"_s}})["sets"_L1]
          .toArray();
  const QString barcode = known[0]["rows"_L1][0][0].toString();
  for (const bool packs : {false, true}) {
    const QString editor = packs ? u"TF2101A_3"_s : u"TF2101A_1"_s;
    onGui([&] { setGlobal(u"GPARAM28"_s, boltos(packs)); });
    send({{u"cmd"_s, u"purchase"_s}, {u"class"_s, editor}});
    dialogPictures(u"purchase-"_s + editor.toLower());
    if (packs && !barcode.isEmpty()) {
      send({{u"cmd"_s, u"type"_s}, {u"element"_s, u"Edit1"_s}, {u"text"_s, u"NEW-1"_s}});
      send({{u"cmd"_s, u"type"_s}, {u"element"_s, u"TM"_s}, {u"text"_s, barcode}});
      send({{u"cmd"_s, u"focus"_s}, {u"element"_s, u"Edit3"_s}});
      dialogPictures(u"purchase-known-barcode"_s);
      closeFront();
    }
    send({{u"cmd"_s, u"click"_s}, {u"element"_s, u"btn_Cancel"_s}});
  }
  onGui([] { setGlobal(u"GPARAM28"_s, u"0"_s); });
}

// The import with a file read that holds new products and one that exists. Over a shop's own database they
// stay in its grid.
void Tour::visitImport() {
  constexpr int products = 101;
  const QTemporaryDir folder;
  QFile file(folder.filePath(u"goods.csv"_s));
  if (!opened_.contains(products) || !file.open(QIODevice::WriteOnly)) return;
  const QString query =
      u"select top 1 D1801DW.TM,D1801.WL_NAME from D1801 inner join D1801DW on D1801.WL_ID=D1801DW.WL_ID where D1801DW.TM<>''"_s;
  const QJsonValue known =
      send({{u"cmd"_s, u"sql"_s}, {u"text"_s, query}})["sets"_L1].toArray()[0]["rows"_L1][0];
  QString lines = u"条码,品名,规格,零售价,会员价\n"_s;
  if (!known[0].toString().isEmpty()) {
    lines += u"%1,\"%2\",500ml,5.00,4.50\n"_s.arg(known[0].toString(), known[1].toString());
  }
  lines += u"6990000000016,桂花酸梅汤,500ml,6.00,5.50\n6990000000023,海盐苏打饼干,200g,8.80,8.00\n"_s;
  file.write(lines.toUtf8());
  file.close();
  onGui([&] { window_.openModule(products, true); });
  send({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 0}});
  const QJsonValue list = front()["id"_L1];
  send({{u"cmd"_s, u"action"_s}, {u"name"_s, u"Act_imp"_s}});
  if (front()["id"_L1] != list) {
    send({{u"cmd"_s, u"pickfile"_s}, {u"path"_s, file.fileName()}});
    send({{u"cmd"_s, u"click"_s}, {u"element"_s, u"Edt_path.button"_s}});
    send({{u"cmd"_s, u"click"_s}, {u"element"_s, u"btn_ref"_s}});
    dialogPictures(u"101-imp-read"_s);
    if (mayChangeData_) {
      fillFrom(u"CLASS_ID"_s, u"select top 1 CLASS_ID from D1004 where len(CLASS_ID)<=4 order by CLASS_ID"_s);
      fillFrom(u"dw_id"_s, u"select top 1 dw_id from D1003 order by dw_id"_s);
      send({{u"cmd"_s, u"click"_s}, {u"element"_s, u"btn_ok"_s}});
      dialogPictures(u"101-imp-done"_s);
    }
    closeFront();
  }
  onGui([&] { window_.tabs()->currentWidget()->close(); });
}

// Types the first answer of a select into an element.
void Tour::fillFrom(const QString& element, const QString& select) {
  const QJsonValue answer = send({{u"cmd"_s, u"sql"_s}, {u"text"_s, select}});
  const QString text = answer["sets"_L1].toArray()[0]["rows"_L1][0][0].toString();
  send({{u"cmd"_s, u"type"_s}, {u"element"_s, element}, {u"text"_s, text}});
}

void Tour::dialogPictures(const QString& name) {
  picture(name);
  onGui([&] {
    QWidget* window = driver_.addressing().foremost();
    if (!window) return;
    const QSize usualSize = window->size();
    window->resize(window->minimumSizeHint().expandedTo(window->minimumSize()));
    pictureOf(*window, name + u"-small"_s);
    window->resize(usualSize);
  });
}

// Leaves the window in front; a question whether to save what was typed is answered with no.
void Tour::closeFront() {
  send({{u"cmd"_s, u"answer"_s}, {u"answers"_s, QJsonArray{u"n"_s}}});
  send({{u"cmd"_s, u"close"_s}});
}

void Tour::picturesOfWindow() {
  for (const int module : opened_.mid(0, 4)) {
    onGui([&] { window_.openModule(module); });
    send({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 50}});
  }
  onGui([&] { pictureOf(window_, u"main-tabs"_s); });
  resize(small);
  onGui([&] { pictureOf(window_, u"main-tabs-small"_s); });
  resize(usual);
  onGui([] { setColours(u"dark"_s); });
  send({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 50}});
  onGui([&] { pictureOf(window_, u"main-tabs-dark"_s); });
  onGui([] { setColours({}); });
  send({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 50}});
  onGui([&] {
    AboutBox about(Session::current().database().displayName(), &window_);
    pictureOf(about, u"about"_s);
    PasswordDialog password(Session::current().database(), G_UserId, {}, PasswordDialog::tr("取消"),
                            &window_);
    pictureOf(password, u"password"_s);
  });
}

QJsonObject Tour::send(const QJsonObject& command) {
  QJsonObject reply = client_.send(command);
  if (!reply["ok"_L1].toBool()) {
    problems_ << command["cmd"_L1].toString() + u": "_s + reply["error"_L1].toString();
  }
  return reply;
}

QJsonObject Tour::front() {
  QJsonObject described;
  onGui([&] {
    if (const QWidget* window = driver_.addressing().foremost()) described = Addressing::describe(*window);
  });
  return described;
}

void Tour::picture(const QString& name) {
  onGui([&] {
    if (QWidget* window = driver_.addressing().foremost()) pictureOf(*window, name);
  });
}

void Tour::pictureOf(QWidget& widget, const QString& name) {
  const QString path = folder_.filePath(name + u".png"_s);
  if (widget.grab().save(path, "PNG")) {
    pictures_ << path;
  } else {
    problems_ << path;
  }
}

void Tour::onGui(const std::function<void()>& work) {
  QMetaObject::invokeMethod(qApp, work, Qt::BlockingQueuedConnection);
}

void Tour::resize(const QSize& size) {
  onGui([&] { window_.resize(size); });
  send({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 20}});
}

}  // namespace goodsbook
