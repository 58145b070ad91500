#include "host/data/copy/database_copy.h"

#include <QCoreApplication>

#include "host/data/copy/row_literals.h"
#include "host/data/errors.h"
#include "host/data/server_database.h"
#include "host/data/sql_sets.h"
#include "schema/tables.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int mostRows = 100;               // of one INSERT
constexpr std::size_t mostBytes = 1 << 20;  // of its text

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(DatabaseCopy)
};

class NoSink : public engine::ResultSink {
 public:
  void beginSet(std::span<const engine::Column>) override {}
  void row(const engine::Row&) override {}
};

[[noreturn]] void fail(const QString& text) {
  throw EDatabaseError(50000, 16, 1, 1, text);
}

QString nameOf(const schema::Table& table) {
  return QString::fromStdString(table.name);
}

QString columnList(const schema::Table& table) {
  QStringList names;
  for (const std::string& column : table.columns) names << QString::fromStdString(column);
  return names.join(u',');
}

QString selectAll(const schema::Table& table) {
  return u"select %1 from %2"_s.arg(columnList(table), nameOf(table));
}

void owner(Database& database, const QString& batch) {
  NoSink sink;
  database.execute(batch, sink, Database::Permission::Owner);
}

// The tables that a new database has rows in.
bool hasStartingRows(const QString& table) {
  return table.compare("SYS_USER"_L1, Qt::CaseInsensitive) == 0 ||
         table.compare("SYS_VERSION"_L1, Qt::CaseInsensitive) == 0;
}

void requireFit(Database& from, Database& to) {
  for (Database* database : {&from, &to}) {
    const ServerCheck checked = checkSchema(*database);
    if (checked.problem != ServerProblem::None) fail(checked.text);
  }
  for (const schema::Table& table : schema::tables()) {
    const SqlSets answer =
        runSql(to, u"select count(*) from "_s + nameOf(table), Database::Permission::Screens);
    const int most = hasStartingRows(nameOf(table)) ? 1 : 0;
    if (answer.sets.at(0).rows.at(0).at(0).value_or(QString()).toLongLong() > most) {
      fail(Texts::tr("目标数据库不是空的：表 %1 中已有数据").arg(nameOf(table)));
    }
  }
}

// Reads the rows in the source and writes them in blocks.
class TableCopy : public engine::ResultSink {
 public:
  TableCopy(Database& to, const schema::Table& table, const CopyWords& words, const CopyProgress& progress)
      : to_(to), name_(nameOf(table)), words_(words), progress_(progress) {
    head_ = u"insert into %1 (%2) values "_s.arg(name_, columnList(table)).toStdString();
  }

  RowSums sums;

  void beginSet(std::span<const engine::Column> columns) override {
    columns_.assign(columns.begin(), columns.end());
  }

  void row(const engine::Row& row) override {
    text_ += text_.empty() ? head_ : ",";
    appendRow(text_, row, columns_, words_);
    sums.add(row, columns_);
    if (++waiting_ == mostRows || text_.size() > mostBytes) send();
  }

  void endSet() override {
    if (waiting_ > 0) send();
  }

 private:
  void send() {
    owner(to_, QString::fromStdString(text_));
    text_.clear();
    waiting_ = 0;
    if (progress_ && !progress_(name_, sums.rows())) throw EAbort();
  }

  Database& to_;
  QString name_;
  const CopyWords& words_;
  const CopyProgress& progress_;
  std::string head_;
  std::vector<engine::Column> columns_;
  std::string text_;
  int waiting_ = 0;
};

class TableSum : public engine::ResultSink {
 public:
  RowSums sums;
  void beginSet(std::span<const engine::Column> columns) override {
    columns_.assign(columns.begin(), columns.end());
  }
  void row(const engine::Row& row) override { sums.add(row, columns_); }

 private:
  std::vector<engine::Column> columns_;
};

void requireSame(const schema::Table& table, const RowSums& sent, const RowSums& arrived) {
  if (sent.rows() != arrived.rows()) {
    fail(Texts::tr("表 %1 复制后核对不符：应有 %2 行，实有 %3 行")
             .arg(nameOf(table))
             .arg(sent.rows())
             .arg(arrived.rows()));
  }
  const int column = sent.differingColumn(arrived);
  if (column < 0) return;
  fail(Texts::tr("表 %1 复制后核对不符：列 %2 的内容不同")
           .arg(nameOf(table), QString::fromStdString(table.columns.at(static_cast<std::size_t>(column)))));
}

qint64 copyTable(Database& from, Database& to, const schema::Table& table, const CopyProgress& progress) {
  const CopyWords words = copyWordsFor(to);
  const bool numbered = !table.identity.empty() && !words.identityInsert.isEmpty();
  if (hasStartingRows(nameOf(table))) owner(to, u"delete from "_s + nameOf(table));
  if (numbered) owner(to, words.identityInsert.arg(nameOf(table), u"on"_s));
  TableCopy copy(to, table, words, progress);
  from.query(selectAll(table), copy);
  if (numbered) owner(to, words.identityInsert.arg(nameOf(table), u"off"_s));
  TableSum arrived;
  to.query(selectAll(table), arrived);
  requireSame(table, copy.sums, arrived.sums);
  return copy.sums.rows();
}

}  // namespace

std::vector<CopiedTable> copyDatabase(Database& from, Database& to, const CopyProgress& progress) {
  requireFit(from, to);
  std::vector<CopiedTable> copied;
  Transaction transaction(to);
  for (const schema::Table& table : schema::tables()) {
    copied.push_back({nameOf(table), copyTable(from, to, table, progress)});
  }
  transaction.commit();
  return copied;
}

}  // namespace goodsbook
