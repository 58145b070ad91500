#include "host/print/label_settings.h"

#include <algorithm>

#include "host/controls/storage.h"

using namespace Qt::StringLiterals;

namespace goodsbook::labelsettings {
namespace {

const QString common = u"labels"_s;

TIniPropStorageManEh store() {
  return TIniPropStorageManEh(u"label_print.ini"_s);
}

QString sectionOf(const QString& printer) {
  return u"printer "_s + (printer.isEmpty() ? u"PDF"_s : printer);
}

}  // namespace

Choice lastChoice() {
  const auto kept = store();
  return {kept.read(common, u"layout"_s).toString(), kept.read(common, u"printer"_s).toString()};
}

void rememberChoice(const Choice& choice) {
  store().write(common, {{u"layout"_s, choice.layout}, {u"printer"_s, choice.printer}});
}

LabelPrinter printerNamed(const QString& name) {
  const auto kept = store();
  const QString section = sectionOf(name);
  const auto number = [&](const QString& key, double usual, double least, double most) {
    bool ok = false;
    const double value = kept.read(section, key, usual).toDouble(&ok);
    return ok ? std::clamp(value, least, most) : usual;
  };
  LabelPrinter printer;
  printer.dpi = static_cast<int>(number(u"dpi"_s, printer.dpi, 72, 2400));
  printer.offset = {number(u"offset_x"_s, 0, -farthest, farthest),
                    number(u"offset_y"_s, 0, -farthest, farthest)};
  printer.scale = {number(u"scale_x"_s, 1, smallest, largest), number(u"scale_y"_s, 1, smallest, largest)};
  return printer;
}

void rememberPrinter(const QString& name, const LabelPrinter& printer) {
  store().write(sectionOf(name), {{u"dpi"_s, printer.dpi},
                                  {u"offset_x"_s, printer.offset.x()},
                                  {u"offset_y"_s, printer.offset.y()},
                                  {u"scale_x"_s, printer.scale.x()},
                                  {u"scale_y"_s, printer.scale.y()}});
}

}  // namespace goodsbook::labelsettings
