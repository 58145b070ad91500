#include "host/U_glo.h"

#include <variant>
#include <vector>

using namespace Qt::StringLiterals;

namespace goodsbook {

void Trecord::setRight(RightByte byte, bool on) {
  const std::uint32_t mask = 0xffU << (8 * (byte % 4));
  auto word = static_cast<std::uint32_t>(words[byte / 4]) & ~mask;
  if (on) word |= 1U << (8 * (byte % 4));
  words[byte / 4] = static_cast<std::int32_t>(word);
}

QString G_UserId, G_UserName, G_CoName, G_PriceFormat, G_ckid, G_CkName, G_inifielname, GPARAM23, GPARAM26;
bool G_CKCOUNT_C, G_CKCOUNT_R, G_CHKCK, GPARAM0, GPARAM1, GPARAM28, GKH1;
int GPARAM2, GPARAM6;

namespace {

using Target = std::variant<QString*, bool*, int*>;
struct Global {
  QLatin1StringView name;
  Target target;
  QString initial;
};

const std::vector<Global>& globals() {
  static const std::vector<Global> all{
      {"G_UserId"_L1, &G_UserId, u""_s},
      {"G_UserName"_L1, &G_UserName, u""_s},
      {"G_CoName"_L1, &G_CoName, u""_s},
      {"G_PriceFormat"_L1, &G_PriceFormat, u"0.00"_s},
      {"G_ckid"_L1, &G_ckid, u""_s},
      {"G_CkName"_L1, &G_CkName, u""_s},
      {"G_CKCOUNT_C"_L1, &G_CKCOUNT_C, u"0"_s},
      {"G_CKCOUNT_R"_L1, &G_CKCOUNT_R, u"0"_s},
      {"G_inifielname"_L1, &G_inifielname, u"goodsbook.ini"_s},
      {"G_CHKCK"_L1, &G_CHKCK, u"0"_s},
      {"GPARAM0"_L1, &GPARAM0, u"0"_s},
      {"GPARAM1"_L1, &GPARAM1, u"0"_s},
      {"GPARAM2"_L1, &GPARAM2, u"6"_s},
      {"GPARAM6"_L1, &GPARAM6, u"0"_s},
      {"GPARAM23"_L1, &GPARAM23, u"1"_s},
      {"GPARAM26"_L1, &GPARAM26, u"PFJ"_s},
      {"GPARAM28"_L1, &GPARAM28, u"0"_s},
      {"GKH1"_L1, &GKH1, u"1"_s},
  };
  return all;
}

bool assign(const Target& target, const QString& value) {
  if (auto* text = std::get_if<QString*>(&target)) {
    **text = value;
    return true;
  }
  if (auto* flag = std::get_if<bool*>(&target)) {
    if (value != "0"_L1 && value != "1"_L1) return false;
    **flag = value == "1"_L1;
    return true;
  }
  bool isNumber = false;
  const int number = value.toInt(&isNumber);
  if (isNumber) *std::get<int*>(target) = number;
  return isNumber;
}

const bool initialised = (resetGlobals(), true);

}  // namespace

bool setGlobal(const QString& name, const QString& value) {
  for (const Global& global : globals()) {
    if (name.compare(global.name, Qt::CaseInsensitive) == 0) return assign(global.target, value);
  }
  return false;
}

std::optional<QString> globalText(const QString& name) {
  for (const Global& global : globals()) {
    if (name.compare(global.name, Qt::CaseInsensitive) != 0) continue;
    if (auto* const* text = std::get_if<QString*>(&global.target)) return **text;
    if (auto* const* flag = std::get_if<bool*>(&global.target)) return **flag ? u"1"_s : u"0"_s;
    return QString::number(*std::get<int*>(global.target));
  }
  return std::nullopt;
}

void resetGlobals() {
  for (const Global& global : globals()) assign(global.target, global.initial);
}

}  // namespace goodsbook
