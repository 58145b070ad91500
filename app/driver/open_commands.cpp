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

// The lines of a purchase as the document that opens a quick editor has them.
std::unique_ptr<RecordSet> purchaseLines() {
  const auto text = [](const QString& name, int size) { return Field{name, FieldType::Text, size, {}, {}}; };
  const auto number = [](const QString& name, FieldType type) { return Field{name, type, 0, {}, {}}; };
  auto lines = std::make_unique<RecordSet>();
  lines->create({text(u"WL_ID"_s, 20), text(u"WL_NAME"_s, 80), text(u"WL_GG"_s, 40), text(u"DW_ID"_s, 2),
                 text(u"DW_NAME"_s, 10), text(u"TM"_s, 30), number(u"ADW"_s, FieldType::Integer),
                 number(u"SL"_s, FieldType::Float), number(u"DJ"_s, FieldType::Float),
                 number(u"MONEY"_s, FieldType::Float), number(u"DW_ZH"_s, FieldType::Float),
                 number(u"DW_J"_s, FieldType::Float), number(u"DW_L"_s, FieldType::Float)});
  return lines;
}

Step purchase(Driver& driver, const Arguments& arguments) {
  const QString className = arguments.text("class");
  if (!driver.masterData().load()) throw CommandError(driver.masterData().error());
  TFrm_Base* screen = driver.masterData().createPublished(className, driver.owner());
  auto* editor = qobject_cast<TFrm_Base_Detail*>(screen);
  if (!editor) {
    delete screen;
    throw CommandError(DriverTexts::tr("没有公开的编辑窗体 %1").arg(className));
  }
  return {.actions = {[&driver, target = QPointer(editor)] {
            std::unique_ptr<RecordSet> lines = purchaseLines();
            RecordSet& rows = *lines;
            driver.keep(u"purchase"_s, std::move(lines));
            guarded(target, [&] { target->SetStatus(rows); });
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
            if (driver.onQuit)
              QMetaObject::invokeMethod(
                  &driver, [&driver] { driver.onQuit(); }, Qt::QueuedConnection);
            return QJsonObject();
          }};
}

constexpr Command commands[] = {{"open", open}, {"purchase", purchase}, {"close", close}, {"quit", quit}};

}  // namespace

std::span<const Command> openCommands() {
  return commands;
}

}  // namespace goodsbook
