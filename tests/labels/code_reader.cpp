#include "tests/labels/code_reader.h"

#include <zbar.h>

namespace goodsbook {

std::vector<ReadCode> readCodes(const QImage& picture) {
  const QImage grey = picture.convertToFormat(QImage::Format_Grayscale8);
  QByteArray dots;
  dots.reserve(grey.width() * grey.height());
  for (int y = 0; y < grey.height(); ++y)
    dots.append(reinterpret_cast<const char*>(grey.constScanLine(y)), grey.width());
  zbar::ImageScanner scanner;
  scanner.set_config(zbar::ZBAR_NONE, zbar::ZBAR_CFG_ENABLE, 0);
  for (const auto kind : {zbar::ZBAR_EAN13, zbar::ZBAR_EAN8, zbar::ZBAR_UPCA, zbar::ZBAR_CODE128})
    scanner.set_config(kind, zbar::ZBAR_CFG_ENABLE, 1);
  // Lines of one direction are enough for upright labels, a few over each label.
  scanner.set_config(zbar::ZBAR_NONE, zbar::ZBAR_CFG_X_DENSITY, 0);
  scanner.set_config(zbar::ZBAR_NONE, zbar::ZBAR_CFG_Y_DENSITY, std::max(2, grey.dotsPerMeterX() / 900));
  zbar::Image image(static_cast<unsigned>(grey.width()), static_cast<unsigned>(grey.height()), "Y800",
                    dots.constData(), static_cast<unsigned long>(dots.size()));
  scanner.scan(image);
  std::vector<ReadCode> found;
  for (auto symbol = image.symbol_begin(); symbol != image.symbol_end(); ++symbol) {
    ReadCode code;
    code.kind = QString::fromStdString(symbol->get_type_name());
    code.text = QString::fromStdString(symbol->get_data());
    found.push_back(std::move(code));
  }
  return found;
}

}  // namespace goodsbook
