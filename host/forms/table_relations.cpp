#include "host/forms/table_relations.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>

#include "host/forms/Base_common.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr QStringView otherDocuments = u"其他单据";

constexpr auto allReferences = std::to_array<Reference>({
    {"D1002"_L1, "D1102"_L1, "ADDR_ID"_L1, u"客户"},
    {"D1002"_L1, "D1103"_L1, "ADDR_ID"_L1, u"供应商"},
    {"D1003"_L1, "D1801DW"_L1, "DW_ID"_L1, u"商品单位"},
    {"D1004"_L1, "D1801"_L1, "CLASS_ID"_L1, u"商品"},
    {"D1007"_L1, "D1802"_L1, "CK_ID"_L1, u"商品库存"},
    {"D1007"_L1, "SYS_USER_CK"_L1, "CK_ID"_L1, u"仓库权限"},
    {"D1007"_L1, "D8202"_L1, "ck_id"_L1, u"进货单"},
    {"D1007"_L1, "D8202A"_L1, "ck_id"_L1, u"进货单"},
    {"D1007"_L1, "D1801DWSJ"_L1, "CK_ID"_L1, u"区域售价"},
    {"D1007"_L1, "D8201A"_L1, "CK_ID"_L1, u"采购订单"},
    {"D1007"_L1, "D8203A"_L1, "CK_ID"_L1, otherDocuments},
    {"D1007"_L1, "D8101A"_L1, "CK_ID"_L1, otherDocuments},
    {"D1007"_L1, "D8102A"_L1, "CK_ID"_L1, otherDocuments},
    {"D1007"_L1, "D8103A"_L1, "CK_ID"_L1, otherDocuments},
    {"D1007"_L1, "D8300A"_L1, "CK_ID"_L1, otherDocuments},
    {"D1007"_L1, "D8301A"_L1, "CK_ID"_L1, otherDocuments},
    {"D1007"_L1, "D8302A"_L1, "CK_ID"_L1, otherDocuments},
    {"D1007"_L1, "D8303A"_L1, "CK_ID"_L1, otherDocuments},
    {"D1007"_L1, "D8401A"_L1, "CK_ID"_L1, otherDocuments},
    {"D1007"_L1, "D8402A"_L1, "CK_ID"_L1, otherDocuments},
    {"D1007"_L1, "D8403A"_L1, "CK_ID"_L1, otherDocuments},
    {"D1007"_L1, "D704A"_L1, "CK_ID"_L1, otherDocuments},
    {"D1007"_L1, "D712A"_L1, "CK_ID"_L1, otherDocuments},
    {"D1007"_L1, "D713A"_L1, "CK_ID"_L1, otherDocuments},
    {"D1008"_L1, "D1101"_L1, "BM_ID"_L1, u"公司职员"},
    {"D1010"_L1, "D8202"_L1, "JY_ID"_L1, u"进货单"},
    {"D1011"_L1, "D1102"_L1, "SEND_ID"_L1, u"客户"},
    {"D1011"_L1, "D1103"_L1, "SEND_ID"_L1, u"供应商"},
    {"D1011"_L1, "D8202"_L1, "send_id"_L1, u"进货单"},
    {"D1101"_L1, "D1102"_L1, "KM_IDA"_L1, u"客户"},
    {"D1101"_L1, "D8202"_L1, "YW_ID"_L1, u"进货单"},
    {"D1103"_L1, "D8202"_L1, "kh_gys_id"_L1, u"进货单"},
    {"D1801"_L1, "D1802"_L1, "WL_ID"_L1, u"商品库存"},
    {"D1801"_L1, "D8202A"_L1, "wl_id"_L1, u"进货单"},
    {"D1801"_L1, "D8201A"_L1, "WL_ID"_L1, u"采购订单"},
    {"D1801"_L1, "D8203A"_L1, "WL_ID"_L1, otherDocuments},
    {"D1801"_L1, "D8101A"_L1, "WL_ID"_L1, otherDocuments},
    {"D1801"_L1, "D8102A"_L1, "WL_ID"_L1, otherDocuments},
    {"D1801"_L1, "D8103A"_L1, "WL_ID"_L1, otherDocuments},
    {"D1801"_L1, "D8300A"_L1, "WL_ID"_L1, otherDocuments},
    {"D1801"_L1, "D8301A"_L1, "WL_ID"_L1, otherDocuments},
    {"D1801"_L1, "D8302A"_L1, "WL_ID"_L1, otherDocuments},
    {"D1801"_L1, "D8303A"_L1, "WL_ID"_L1, otherDocuments},
    {"D1801"_L1, "D8401A"_L1, "WL_ID"_L1, otherDocuments},
    {"D1801"_L1, "D8402A"_L1, "WL_ID"_L1, otherDocuments},
    {"D1801"_L1, "D8403A"_L1, "WL_ID"_L1, otherDocuments},
    {"D1801"_L1, "D704A"_L1, "WL_ID"_L1, otherDocuments},
    {"D1801"_L1, "D712A"_L1, "WL_ID"_L1, otherDocuments},
    {"D1801"_L1, "D713A"_L1, "WL_ID"_L1, otherDocuments},
});

constexpr OwnedRows productUnits{"D1801"_L1, "D1801DW"_L1, "WL_ID"_L1, "adw"_L1, "T"_L1, u"商品单位"};

constexpr auto stockColumns = std::to_array<QLatin1StringView>({"KC"_L1, "MONEY"_L1, "DJ"_L1, "TMC"_L1});

bool isProducts(const QString& table) {
  return table.compare("D1801"_L1, Qt::CaseInsensitive) == 0;
}

}  // namespace

std::span<const Reference> references() {
  return allReferences;
}

const OwnedRows* ownedRows(const QString& master) {
  return isProducts(master) ? &productUnits : nullptr;
}

std::span<const QLatin1StringView> keptByOthers(const QString& table) {
  return isProducts(table) ? std::span<const QLatin1StringView>(stockColumns)
                           : std::span<const QLatin1StringView>();
}

std::optional<RowPlace> rowPlaceOf(const TFrm_Base_Common& screen) {
  static const QRegularExpression form(u"^\\s*delete\\s+from\\s+(\\w+)\\s+where\\s+(\\w+)\\s*=\\s*%S"_s,
                                       QRegularExpression::CaseInsensitiveOption);
  const QRegularExpressionMatch match = form.match(screen.bodyParam(bodyparam::deleteStatement));
  if (!match.hasMatch()) return std::nullopt;
  return RowPlace{match.captured(1), match.captured(2)};
}

}  // namespace goodsbook
