#include "host/print/bar_code.h"

#include <zint.h>

#include <QCoreApplication>
#include <algorithm>
#include <memory>

namespace goodsbook {
namespace {

struct Labels {
  Q_DECLARE_TR_FUNCTIONS(Labels)
};

struct Numbered {
  BarCode::Kind kind;
  qsizetype digits;
  int symbology;
  int quietBefore, quietBehind;
};
constexpr Numbered numbered[] = {{BarCode::Kind::Ean13, 13, BARCODE_EANX, 11, 7},
                                 {BarCode::Kind::UpcA, 12, BARCODE_UPCA, 9, 9},
                                 {BarCode::Kind::Ean8, 8, BARCODE_EANX, 7, 7}};
constexpr int code128Quiet = 10;

bool isDigits(const QString& text) {
  return std::ranges::all_of(text, [](QChar sign) { return sign >= u'0' && sign <= u'9'; });
}

bool isPrintable(const QString& text) {
  return std::ranges::all_of(text,
                             [](QChar sign) { return sign.unicode() >= 0x20 && sign.unicode() < 0x7f; });
}

struct SymbolDelete {
  void operator()(zint_symbol* symbol) const { ZBarcode_Delete(symbol); }
};

// Lengths of bars and gaps in turn; none when the text cannot be encoded.
std::vector<std::uint8_t> runsOf(int symbology, const QString& text) {
  const std::unique_ptr<zint_symbol, SymbolDelete> symbol(ZBarcode_Create());
  if (!symbol) return {};
  symbol->symbology = symbology;
  const QByteArray bytes = text.toLatin1();
  const auto* source = reinterpret_cast<const unsigned char*>(bytes.constData());
  if (ZBarcode_Encode(symbol.get(), source, static_cast<int>(bytes.size())) >= ZINT_ERROR) return {};
  const auto isBar = [&](int module) {
    return (symbol->encoded_data[0][module / 8] >> (module % 8) & 1) != 0;
  };
  int first = 0, behind = symbol->width;
  while (first < behind && !isBar(first)) ++first;
  while (behind > first && !isBar(behind - 1)) --behind;
  std::vector<std::uint8_t> runs;
  for (int module = first; module < behind; ++module) {
    if (module == first || isBar(module) != isBar(module - 1)) runs.push_back(0);
    ++runs.back();
  }
  return runs;
}

BarCode made(BarCode::Kind kind, std::vector<std::uint8_t> runs, int quietBefore, int quietBehind) {
  BarCode code;
  if (runs.empty()) return code;
  code.kind = kind;
  for (const std::uint8_t run : runs) code.modules += run;
  code.runs = std::move(runs);
  code.quietBefore = quietBefore;
  code.quietBehind = quietBehind;
  return code;
}

}  // namespace

QChar checkDigitOf(QStringView digits) {
  int sum = 0;
  int weight = 3;
  for (qsizetype i = digits.size(); i-- > 0; weight = 4 - weight)
    sum += weight * (digits[i].unicode() - u'0');
  return QChar(u'0' + (10 - sum % 10) % 10);
}

BarCode barCodeOf(const QString& text) {
  BarCode code;
  if (text.trimmed().isEmpty()) {
    code.problem = Labels::tr("没有条码");
    return code;
  }
  if (!isPrintable(text)) {
    code.problem = Labels::tr("条码“%1”含有条码不能表示的字符").arg(text);
    return code;
  }
  QString problem;
  for (const Numbered& kind : numbered) {
    if (text.size() != kind.digits || !isDigits(text)) continue;
    const QStringView body = QStringView(text).chopped(1);
    const QChar right = checkDigitOf(body);
    if (text.back() == right)
      return made(kind.kind, runsOf(kind.symbology, body.toString()), kind.quietBefore, kind.quietBehind);
    problem = Labels::tr("条码 %1 的校验位应为 %2，已按 Code 128 打印").arg(text, QString(right));
  }
  code = made(BarCode::Kind::Code128, runsOf(BARCODE_CODE128, text), code128Quiet, code128Quiet);
  code.problem = code.isEmpty() ? Labels::tr("条码 %1 太长，不能打印").arg(text) : problem;
  return code;
}

}  // namespace goodsbook
