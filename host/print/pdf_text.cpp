#include "host/print/pdf_text.h"

#include <QFile>
#include <algorithm>
#include <array>
#include <utility>

namespace goodsbook {
namespace {

// Radicals without a compatibility mapping of their own, in ascending order.
constexpr auto supplement = std::to_array<std::pair<char16_t, char16_t>>(
    {{0x2e81, u'厂'}, {0x2e84, u'乙'}, {0x2e85, u'亻'}, {0x2e86, u'冂'}, {0x2e88, u'刀'}, {0x2e89, u'刂'},
     {0x2e8a, u'卜'}, {0x2e8c, u'小'}, {0x2e8e, u'兀'}, {0x2e8f, u'尣'}, {0x2e90, u'尢'}, {0x2e92, u'巳'},
     {0x2e93, u'幺'}, {0x2e94, u'彑'}, {0x2e95, u'彐'}, {0x2e96, u'忄'}, {0x2e97, u'心'}, {0x2e98, u'扌'},
     {0x2e99, u'攵'}, {0x2e9b, u'旡'}, {0x2e9c, u'日'}, {0x2e9d, u'月'}, {0x2e9e, u'歺'}, {0x2e9f, u'母'},
     {0x2ea0, u'民'}, {0x2ea1, u'氵'}, {0x2ea2, u'氺'}, {0x2ea3, u'灬'}, {0x2ea4, u'爫'}, {0x2ea6, u'丬'},
     {0x2ea7, u'牛'}, {0x2ea8, u'犭'}, {0x2ea9, u'王'}, {0x2eaa, u'疋'}, {0x2eab, u'目'}, {0x2eac, u'示'},
     {0x2ead, u'礻'}, {0x2eae, u'竹'}, {0x2eaf, u'糹'}, {0x2eb0, u'纟'}, {0x2eb2, u'罒'}, {0x2eb6, u'羊'},
     {0x2eb9, u'耂'}, {0x2eba, u'肀'}, {0x2ebb, u'聿'}, {0x2ebc, u'肉'}, {0x2ec1, u'虎'}, {0x2ec2, u'衤'},
     {0x2ec3, u'覀'}, {0x2ec4, u'西'}, {0x2ec5, u'见'}, {0x2ec6, u'角'}, {0x2ec8, u'讠'}, {0x2ec9, u'贝'},
     {0x2eca, u'足'}, {0x2ecb, u'车'}, {0x2ed0, u'钅'}, {0x2ed1, u'長'}, {0x2ed2, u'镸'}, {0x2ed3, u'长'},
     {0x2ed4, u'门'}, {0x2ed5, u'阜'}, {0x2ed6, u'阝'}, {0x2ed7, u'雨'}, {0x2ed8, u'青'}, {0x2ed9, u'韦'},
     {0x2eda, u'页'}, {0x2edb, u'风'}, {0x2edc, u'飞'}, {0x2edd, u'食'}, {0x2edf, u'飠'}, {0x2ee0, u'饣'},
     {0x2ee1, u'首'}, {0x2ee2, u'马'}, {0x2ee3, u'骨'}, {0x2ee4, u'鬼'}, {0x2ee5, u'鱼'}, {0x2ee6, u'鸟'},
     {0x2ee7, u'卤'}, {0x2ee8, u'麦'}, {0x2ee9, u'黄'}, {0x2eea, u'黾'}, {0x2eeb, u'斉'}, {0x2eec, u'齐'},
     {0x2eed, u'歯'}, {0x2eee, u'齿'}, {0x2eef, u'竜'}, {0x2ef0, u'龙'}, {0x2ef1, u'龜'}, {0x2ef2, u'亀'},
     {0x2ef3, u'龟'}});

char16_t characterOf(char16_t code) {
  if (code >= 0x2f00 && code <= 0x2fd5)
    return QString(QChar(code)).normalized(QString::NormalizationForm_KC).front().unicode();
  const auto found =
      std::ranges::lower_bound(supplement, code, {}, [](const auto& pair) { return pair.first; });
  return found != supplement.end() && found->first == code ? found->second : code;
}

constexpr qint64 digits = 4;

// One table from glyphs to characters: codes of four hexadecimal digits in angle brackets.
void mendTable(char* from, const char* behind) {
  for (char* at = from; at + digits + 1 < behind; ++at) {
    if (at[0] != '<' || at[digits + 1] != '>') continue;
    bool isCode = false;
    const auto code = static_cast<char16_t>(QByteArray::fromRawData(at + 1, digits).toUShort(&isCode, 16));
    const char16_t character = isCode ? characterOf(code) : code;
    if (character == code) continue;
    const QByteArray mended = QByteArray::number(character, 16).rightJustified(digits, '0').toUpper();
    std::copy_n(mended.constData(), digits, at + 1);
  }
}

}  // namespace

bool makeTextSearchable(const QString& pdf) {
  QFile file(pdf);
  if (!file.open(QIODevice::ReadWrite)) return false;
  auto* bytes = reinterpret_cast<char*>(file.map(0, file.size()));
  if (bytes == nullptr) return false;
  const QByteArray text = QByteArray::fromRawData(bytes, file.size());
  for (qsizetype from = text.indexOf("beginbfrange"); from >= 0;
       from = text.indexOf("beginbfrange", from + 1)) {
    const qsizetype behind = text.indexOf("endbfrange", from);
    if (behind < 0) break;
    mendTable(bytes + from, bytes + behind);
  }
  return true;
}

}  // namespace goodsbook
