#pragma once

#include <QImage>
#include <QString>
#include <vector>

namespace goodsbook {

// What a scanner that knows nothing of our own encoder reads in a picture.
struct ReadCode {
  QString kind;  // "EAN-13", "EAN-8", "UPC-A", "CODE-128"
  QString text;
};

std::vector<ReadCode> readCodes(const QImage& picture);

}  // namespace goodsbook
