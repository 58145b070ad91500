#pragma once

#include <future>
#include <memory>
#include <optional>

#include "host/data/odbc/odbc_connection.h"
#include "host/data/odbc/row_block.h"

namespace goodsbook {

// A statement on its way, together with the connection that it stands on. One thread at a time works with it,
// but for stop().
struct OdbcReading {
  explicit OdbcReading(std::shared_ptr<OdbcConnection> its) : connection(std::move(its)) {}

  void open(const QString& select);  // EDatabaseError, also where the select has no rows
  // Sends the batch, the first time, and goes on to the next set and its first rows. False at the end.
  bool toNextSet(const QString& batch, engine::ResultSink& besideRows);
  void close();  // the connection stays

  // Ends work that goes on in another thread. A driver that is told so before it begins to wait for the
  // server does not hear it.
  void stop(const std::future<void>& work) const;

  std::shared_ptr<OdbcConnection> connection;
  std::optional<OdbcConnection::Statement> statement;
  std::optional<RowBlock> rows;
};

}  // namespace goodsbook
