#pragma once

#include <QByteArray>

namespace goodsbook::picture {

// Whether a JPEG file can be decoded to its end without a hole: readers take what is missing or unreadable
// for grey, and only warn. Bytes behind the end of the picture, and slips of its writer that no viewer shows,
// are no damage. A JPEG carries no check sum: where wrong bytes happen to read as just as many blocks as the
// right ones, no reader can tell.
bool isWholeJpeg(const QByteArray& file);

}  // namespace goodsbook::picture
