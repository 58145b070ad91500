#include <QJsonArray>
#include <QPointer>
#include <algorithm>
#include <array>
#include <memory>

#include "app/driver/driver.h"
#include "app/driver/table.h"
#include "app/master_data.h"
#include "host/data/record_set.h"
#include "host/forms/Base_detail.h"
#include "products/purchase_entry.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

struct NamedRight {
  const char* name;
  Trecord::RightByte byte;
};
constexpr std::array rights = {
    NamedRight{"add", Trecord::addRight},       NamedRight{"edit", Trecord::editRight},
    NamedRight{"delete", Trecord::deleteRight}, NamedRight{"print", Trecord::printRight},
    NamedRight{"export", Trecord::exportRight}, NamedRight{"import", Trecord::importRight},
    NamedRight{"cost", Trecord::costRight}};

// The rights named in the command; those not named stay as `record` has them.
void setRights(Trecord& record, const QJsonObject& wanted) {
  for (auto given = wanted.begin(); given != wanted.end(); ++given) {
    const auto right = std::ranges::find_if(
        rights, [&](const NamedRight& known) { return QLatin1StringView(known.name) == given.key(); });
    if (right == rights.end()) throw CommandError(DriverTexts::tr("没有权限 %1").arg(given.key()));
    if (!given.value().isBool())
      throw CommandError(DriverTexts::tr("字段 %1 应为%2").arg(given.key(), u"true/false"_s));
    record.setRight(right->byte, given.value().toBool());
  }
}

Trecord callRecord(const Arguments& arguments) {
  Trecord record;
  if (arguments.has("words") && arguments.has("module")) {
    throw CommandError(DriverTexts::tr("module 和 words 只能给出一个"));
  }
  if (arguments.has("words")) {
    const std::vector<int> words = arguments.integers("words");
    if (words.size() != record.words.size()) {
      throw CommandError(DriverTexts::tr("words 应有 %1 个整数").arg(record.words.size()));
    }
    std::ranges::copy(words, record.words.begin());
  } else {
    record.setModule(arguments.integer("module"));
    for (const NamedRight& right : rights) record.setRight(right.byte, true);
  }
  setRights(record, arguments.object("rights"));
  return record;
}

int newestId() {
  int newest = 0;
  for (const TFrm_Base* screen : TFrm_Base::all()) newest = std::max(newest, screen->screenId());
  return newest;
}

Step open(Driver& driver, const Arguments& arguments) {
  const Trecord record = callRecord(arguments);
  if (!driver.masterData().load()) throw CommandError(driver.masterData().error());
  const int before = newestId();
  return {.actions = {[&driver, record] {
            guarded(driver.owner(), [&] { driver.masterData().open(record, driver.owner()); });
          }},
          .answer = [&driver, before] {
            // The list comes before the editor and the dialogs that it makes for itself.
            for (const QWidget* window : driver.addressing().windows()) {
              if (qobject_cast<const TFrm_Base*>(window) && Addressing::idOf(*window) > before) {
                return QJsonObject{{u"screen"_s, Addressing::describe(*window)}};
              }
            }
            return QJsonObject{{u"screen"_s, QJsonValue::Null}};
          }};
}

// As another module does it, over lines that outlive the editor's window, for `rows` to read.
Step purchase(Driver& driver, const Arguments& arguments) {
  const QString className = arguments.text("class");
  if (className != quickEditorClass && className != quickEditorWithReferencePricesClass)
    throw CommandError(DriverTexts::tr("没有公开的编辑窗体 %1").arg(className));
  if (!driver.masterData().load()) throw CommandError(driver.masterData().error());
  return {.actions = {[&driver, className] {
            TFrm_Base_Detail* editor = createQuickEditor(className, driver.owner());
            if (!editor) throw CommandError(DriverTexts::tr("没有公开的编辑窗体 %1").arg(className));
            auto lines = std::make_unique<RecordSet>();
            lines->create(purchaseLineFields());
            RecordSet& rows = *lines;
            driver.keep(u"purchase"_s, std::move(lines));
            // The next purchase takes the place of these lines, and of their editor with them.
            QObject::connect(&rows, &QObject::destroyed, editor, &QObject::deleteLater);
            guarded(editor, [&] { editor->SetStatus(rows); });
          }}};
}

Step close(Driver& driver, const Arguments& arguments) {
  const auto id = arguments.optionalInteger("id");
  QWidget& window = id ? driver.addressing().byId(*id) : driver.addressing().reachable();
  return {.actions = {[target = QPointer(&window)] {
            if (target) target->close();
          }}};
}

Step quit(Driver& driver, const Arguments&) {
  return {.actions = {}, .answer = [&driver] {
            driver.leave();
            return QJsonObject();
          }};
}

constexpr Command commands[] = {{"open", open}, {"purchase", purchase}, {"close", close}, {"quit", quit}};

}  // namespace

std::span<const Command> openCommands() {
  return commands;
}

}  // namespace goodsbook
