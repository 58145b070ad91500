#include "schema/sample/organisation.h"

#include "schema/sample/goods_table.h"
#include "schema/sample/random.h"
#include "schema/sample/rows.h"

namespace goodsbook::sample {
namespace {

struct Region {
  std::string_view code, name, manager, parent;
};
constexpr Region regionTable[] = {
    {"0101", "城东片区", "韩雨田", "01"}, {"0102", "城西片区", "韩雨田", "01"},
    {"0103", "高新片区", "邹小满", "01"}, {"02", "周边县市", "邹小满", "Z"},
    {"0201", "北部乡镇", "邹小满", "02"}, {"0202", "南部乡镇", "邹小满", "02"},
    {"03", "外省", "纪南星", "Z"},        {"0301", "华东", "纪南星", "03"},
    {"0302", "华南", "纪南星", "03"},     {"0303", "西南", "纪南星", "03"},
};

struct Department {
  std::string_view code, name, head, note, parent;
};
constexpr Department departmentTable[] = {
    {"01", "总经办", "沈若川", "", "Z"},
    {"02", "采购部", "葛青杉", "", "Z"},
    {"0201", "食品采购组", "葛青杉", "", "02"},
    {"0202", "百货采购组", "闵知秋", "", "02"},
    {"03", "营业部", "韩雨田", "", "Z"},
    {"0301", "批发组", "邹小满", "送货到店", "03"},
    {"0302", "一店", "裴星禾", "营业到22点", "03"},
    {"0303", "二店", "骆晓棠", "", "03"},
    {"04", "仓储部", "柯远山", "", "Z"},
    {"05", "财务部", "苏映雪", "", "Z"},
};

struct Warehouse {
  std::string_view code, name, keeper, telephone, address, note, parent;
};
constexpr Warehouse warehouseTable[] = {
    {"01", "总仓", "柯远山", "0571-55500101", "柳荫路18号", "", "Z"},
    {"0101", "总仓常温库", "柯远山", "0571-55500102", "柳荫路18号1栋", "", "01"},
    {"0102", "总仓冷藏库", "田阿满", "0571-55500103", "柳荫路18号2栋", "温度4度以下", "01"},
    {"02", "门店", "韩雨田", "", "", "", "Z"},
    {"0201", "一店", "裴星禾", "0571-55500201", "青石街66号", "", "02"},
    {"0202", "二店", "骆晓棠", "0571-55500202", "望河路120号", "", "02"},
    {"03", "退货仓", "柯远山", "0571-55500104", "柳荫路18号3栋", "待退厂家", "Z"},
};
constexpr std::string_view stockTable[] = {"0101", "0102", "0201", "0202"};

struct Employee {
  std::string_view code, name, department;
  bool left;
};
constexpr Employee employeeTable[] = {
    {"1001", "沈若川", "01", false},   {"1002", "葛青杉", "0201", false}, {"1003", "闵知秋", "0202", false},
    {"1004", "杭一帆", "0201", false}, {"1005", "韩雨田", "03", false},   {"1006", "邹小满", "0301", false},
    {"1007", "纪南星", "0301", false}, {"1008", "裴星禾", "0302", false}, {"1009", "骆晓棠", "0303", false},
    {"1010", "柯远山", "04", false},   {"1011", "田阿满", "04", false},   {"1012", "苏映雪", "05", false},
    {"1013", "鲁小溪", "05", false},   {"1014", "阮青禾", "0302", false}, {"1015", "戚明月", "0302", false},
    {"1016", "卫东篱", "0303", false}, {"1017", "汤圆圆", "0303", true},  {"1018", "侯南乔", "0301", true},
};
constexpr std::string_view buyerTable[] = {"1002", "1003", "1004"};

struct User {
  std::string_view code, name;
  int active;
};
constexpr User userTable[] = {
    {"CG01", "葛青杉", 1}, {"CG02", "闵知秋", 1}, {"CK01", "柯远山", 1}, {"CW01", "苏映雪", 1},
    {"MD01", "裴星禾", 1}, {"MD02", "骆晓棠", 1}, {"MD09", "汤圆圆", 0},
};
constexpr std::string_view writerTable[] = {"ADMIN", "CG01", "CG01", "CG02"};

// What each may do: add, edit, delete, print, export, import, cost.
struct Right {
  std::string_view user, module, flags;
};
constexpr Right rightTable[] = {
    {"CG01", "*", "1101000"},   {"CG01", "101", "1111111"}, {"CG01", "114", "1111101"},
    {"CG02", "*", "0001000"},   {"CG02", "101", "1101101"}, {"CG02", "114", "1101001"},
    {"CK01", "107", "0101000"}, {"CK01", "102", "1111000"}, {"CK01", "101", "0001000"},
    {"CW01", "*", "0001101"},   {"CW01", "122", "1111101"}, {"MD01", "101", "0001000"},
    {"MD01", "102", "1111000"}, {"MD01", "113", "1101000"}, {"MD02", "101", "0001000"},
    {"MD02", "102", "1111000"},
};

// W: 1 read and write, 0 read only.
struct WarehouseRight {
  std::string_view user, warehouse;
  int write;
};
constexpr WarehouseRight warehouseRightTable[] = {
    {"CG01", "0101", 1}, {"CG01", "0102", 1}, {"CG02", "0101", 1}, {"CK01", "0101", 1}, {"CK01", "0102", 1},
    {"CK01", "03", 1},   {"CW01", "0101", 0}, {"CW01", "0102", 0}, {"CW01", "0201", 0}, {"CW01", "0202", 0},
    {"MD01", "0201", 1}, {"MD01", "0101", 0}, {"MD02", "0202", 1}, {"MD02", "0101", 0},
};

constexpr std::string_view companyName = "样例商店";

void writeTrees(const Tools& tools) {
  Rows regions(tools, "D1002 (addr_ID,addr_NAME,addr_GL,addr_TEL,addr_ADDR,addr_NOTE,OID)");
  for (const Region& region : regionTable)
    regions.text(region.code)
        .text(region.name)
        .text(region.manager)
        .text("")
        .text("")
        .text("")
        .text(region.parent)
        .end();
  regions.flush();

  Rows departments(tools, "D1008 (BM_ID,BM_NAME,PYM,BM_ZG,BM_NOTE,OID)");
  for (const Department& department : departmentTable)
    departments.text(department.code)
        .text(department.name)
        .text(tools.initials(department.name))
        .text(department.head)
        .text(department.note)
        .text(department.parent)
        .end();
  departments.flush();

  Rows warehouses(tools, "D1007 (CK_ID,CK_NAME,PYM,CK_GL,CK_TEL,CK_ADDR,CK_NOTE,OID)");
  for (const Warehouse& house : warehouseTable)
    warehouses.text(house.code)
        .text(house.name)
        .text(tools.initials(house.name))
        .text(house.keeper)
        .text(house.telephone)
        .text(house.address)
        .text(house.note)
        .text(house.parent)
        .end();
  warehouses.flush();

  Rows categoryRows(tools, "D1004 (CLASS_ID,CLASS_NAME,CLASS_NOTE,OID,PYM)");
  for (const Category& category : categories()) {
    const bool top = category.code.size() == 2;
    categoryRows.text(category.code)
        .text(category.name)
        .text("")
        .text(top ? "Z" : category.code.substr(0, category.code.size() - 1))
        .text(tools.initials(category.name))
        .end();
  }
  categoryRows.flush();
}

void writeStaff(const Tools& tools) {
  Random random(1101);
  Rows staff(tools, "D1101 (YW_ID,YW_NAME,PYM,BM_ID,TEL,FAX,EMAIL,ADDR,TC,BDATE,EDATE,T,NOTE)");
  for (const Employee& employee : employeeTable) {
    const int begin = lastDay - random.between(200, 2000);
    staff.text(employee.code)
        .text(employee.name)
        .text(tools.initials(employee.name))
        .text(employee.department)
        .text("13" + padded(random.below(1'000'000'000), 9))
        .text("")
        .text("staff" + std::string(employee.code) + "@example.com")
        .text("青石街" + std::to_string(random.between(1, 200)) + "号")
        .money(random.between(0, 8))
        .time(begin, 0)
        .time(begin + 365 * 6, 0)
        .number(employee.left ? 1 : 0)
        .text("")
        .end();
  }
  staff.flush();
}

void writeUsers(const Tools& tools) {
  Rows users(tools, "SYS_USER (USER_ID,USER_NAME,T)");
  for (const User& user : userTable) users.text(user.code).text(user.name).number(user.active).end();
  users.flush();

  Rows rights(tools, "SYS_RIGHT (USER_ID,MODULE,R_ADD,R_EDIT,R_DELETE,R_PRINT,R_EXPORT,R_IMPORT,R_COST)");
  for (const Right& right : rightTable) {
    rights.text(right.user).text(right.module);
    for (const char flag : right.flags) rights.number(flag - '0');
    rights.end();
  }
  rights.flush();

  Rows warehouses(tools, "SYS_USER_CK (USER_ID,CK_ID,W)");
  for (const WarehouseRight& right : warehouseRightTable)
    warehouses.text(right.user).text(right.warehouse).number(right.write).end();
  warehouses.flush();
}

}  // namespace

std::span<const std::string_view> stockWarehouses() {
  return stockTable;
}
std::span<const std::string_view> userIds() {
  return writerTable;
}
std::span<const std::string_view> buyerIds() {
  return buyerTable;
}

void writeOrganisation(const Tools& tools, const Goods& goods) {
  writeTrees(tools);
  writeStaff(tools);
  writeUsers(tools);
  const std::string picture =
      goods.makePicture ? binary(goods.makePicture(0, companyName)) : std::string("null");
  tools.execute("insert into sys_co (id,co,mod_pict) values (N'01'," + quoted(companyName) + "," + picture +
                ")");
}

}  // namespace goodsbook::sample
