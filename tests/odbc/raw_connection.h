#pragma once

#include <QString>
#include <QStringList>

namespace goodsbook::test {

// A connection without the program's own layer: what the ODBC manager tells of a batch, answer after answer.
class RawConnection {
 public:
  explicit RawConnection(const QString& address);  // std::runtime_error
  ~RawConnection();
  RawConnection(const RawConnection&) = delete;
  RawConnection& operator=(const RawConnection&) = delete;

  // "2 rows", "3 columns", "message", "no data" (of the first answer), "error NUMBER".
  QStringList run(const QString& batch);

 private:
  void* environment_ = nullptr;
  void* connection_ = nullptr;
};

}  // namespace goodsbook::test
