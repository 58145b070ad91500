#include "host/sheet/sheet_xml.h"

#include "host/sheet/sheet_errors.h"

namespace goodsbook::sheet {
namespace {

constexpr int deepest = 64;
constexpr int piecesBetweenPauses = 2000;

}  // namespace

SheetXml::SheetXml(std::unique_ptr<ZipEntry> entry, QString path, std::function<void()> pause)
    : entry_(std::move(entry)), path_(std::move(path)), pause_(std::move(pause)), xml_(entry_.get()) {}

bool SheetXml::next() {
  if (++sincePause_ >= piecesBetweenPauses) {
    sincePause_ = 0;
    pause_();
  }
  const QXmlStreamReader::TokenType token = xml_.readNext();
  entry_->check();
  switch (token) {
    case QXmlStreamReader::StartElement:
      if (++depth_ > deepest) failDamaged(path_);
      break;
    case QXmlStreamReader::EndElement:
      --depth_;
      break;
    case QXmlStreamReader::Invalid:
    case QXmlStreamReader::DTD:
      failDamaged(path_);
    default:
      break;
  }
  entry_->endPiece();
  return token != QXmlStreamReader::EndDocument;
}

QString SheetXml::attribute(QLatin1StringView name) const {
  for (const QXmlStreamAttribute& attribute : xml_.attributes()) {
    if (attribute.name() == name) return attribute.value().toString();
  }
  return {};
}

}  // namespace goodsbook::sheet
