#pragma once

#include <QString>
#include <array>
#include <cstdint>
#include <optional>

#include "host/export.h"

// The call record and the settings of the host that screens read and never write.
namespace goodsbook {

// 28 words. Word 24 is the module number; rights are single bytes of words 20 and 21, numbered from the
// record's start.
struct Trecord {
  std::array<std::int32_t, 28> words{};

  static constexpr int moduleWord = 24;
  enum RightByte {
    importRight = 80,
    addRight = 81,
    editRight = 82,
    deleteRight = 83,
    printRight = 84,
    exportRight = 85,
    costRight = 86
  };

  std::int32_t module() const { return words[moduleWord]; }
  void setModule(std::int32_t number) { words[moduleWord] = number; }
  bool right(RightByte byte) const {
    return (static_cast<std::uint32_t>(words[byte / 4]) >> (8 * (byte % 4)) & 0xffU) != 0;
  }
  GOODSBOOKHOST_EXPORT void setRight(RightByte byte, bool on);
  bool operator==(const Trecord&) const = default;
};
static_assert(sizeof(Trecord) == 112);

extern GOODSBOOKHOST_EXPORT QString G_UserId, G_UserName, G_CoName;
extern GOODSBOOKHOST_EXPORT QString G_PriceFormat;     // "0.00"
extern GOODSBOOKHOST_EXPORT QString G_ckid, G_CkName;  // the user's default warehouse
extern GOODSBOOKHOST_EXPORT bool G_CKCOUNT_C;          // a new product gets its stock-control row
extern GOODSBOOKHOST_EXPORT bool G_CKCOUNT_R;
extern GOODSBOOKHOST_EXPORT QString G_inifielname;  // settings file in the program's folder
extern GOODSBOOKHOST_EXPORT bool G_CHKCK;           // rights per warehouse are in use
extern GOODSBOOKHOST_EXPORT bool GPARAM0;           // automatic product numbers
extern GOODSBOOKHOST_EXPORT bool GPARAM1;           // ... with the category code in front
extern GOODSBOOKHOST_EXPORT int GPARAM2;            // length of their serial
extern GOODSBOOKHOST_EXPORT int GPARAM6;            // length of partner numbers; 0: typed by hand
extern GOODSBOOKHOST_EXPORT QString GPARAM23;       // which product editor: "0", "1" or another text
extern GOODSBOOKHOST_EXPORT QString GPARAM26;       // "PFJ": quick editors show the wholesale price
extern GOODSBOOKHOST_EXPORT bool GPARAM28;          // packs and large units are in use
extern GOODSBOOKHOST_EXPORT bool GKH1;              // false: an empty barcode takes the product number

// Sets one of the above by its name, flags from "0"/"1". False for an unknown name or an unreadable value.
GOODSBOOKHOST_EXPORT bool setGlobal(const QString& name, const QString& value);
// Its value as a text, flags "0"/"1"; nothing for an unknown name.
GOODSBOOKHOST_EXPORT std::optional<QString> globalText(const QString& name);
GOODSBOOKHOST_EXPORT void resetGlobals();  // to what a new shop starts with

}  // namespace goodsbook
