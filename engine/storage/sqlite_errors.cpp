#include "engine/storage/sqlite_errors.h"

#include <sqlite3.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "engine/runtime/failure.h"

namespace goodsbook::engine {
namespace {

SqlError make(int number, int severity, std::string text) {
  return SqlError({.number = number, .severity = severity, .state = 1, .line = 1, .text = std::move(text)});
}

// What SQLite says of statements that are beyond its limits.
bool tellsOfALimit(std::string_view detail) {
  constexpr std::string_view limits[] = {"parser stack overflow",
                                         "Expression tree is too large",
                                         "too many terms in compound SELECT",
                                         "too many SQL variables",
                                         "too many columns",
                                         "at most "};
  return std::any_of(std::begin(limits), std::end(limits),
                     [&](std::string_view limit) { return detail.find(limit) != std::string_view::npos; });
}

}  // namespace

SqlError sqliteFailure(sqlite3* db, int code) {
  const std::string detail = db == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(db);
  switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return make(1222, 16, "已超过了锁请求超时时段：另一个程序正在写入此数据库，请稍后再试。");
    case SQLITE_FULL:
      return make(1105, 17, "无法为数据库分配空间：磁盘已满。请释放磁盘空间后再试。");
    case SQLITE_IOERR:
      return make(823, 21, concat("读写数据库文件时出现磁盘错误（", detail, "）。请检查磁盘。"));
    case SQLITE_CORRUPT:
      return make(5172, 21, concat("数据库文件已损坏（", detail, "）。请用最近的备份恢复。"));
    case SQLITE_NOTADB:
      return make(5171, 16, "该文件不是数据库文件。");
    case SQLITE_READONLY:
      return make(3906, 16, "无法更新数据库，因为数据库文件或它所在的文件夹是只读的。");
    case SQLITE_CANTOPEN:
      return make(4060, 16, concat("无法打开数据库文件（", detail, "）。"));
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return make(4060, 16, "没有打开数据库文件的权限。");
    case SQLITE_INTERRUPT:
      return make(3617, 16, "语句已被用户中断。");
    case SQLITE_NOMEM:
      return make(701, 17, "没有足够的内存来运行此语句。");
    case SQLITE_TOOBIG:
      return make(8152, 16, "值太大，无法保存。");
    default:
      if (tellsOfALimit(detail)) return make(191, 15, "语句太长或嵌套得太深，请拆成较小的语句。");
      return make(50001, 16, concat("数据库引擎内部错误: ", detail));
  }
}

}  // namespace goodsbook::engine
