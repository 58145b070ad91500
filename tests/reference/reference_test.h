#pragma once

#include "app/driver/screen_test.h"

namespace goodsbook {

// What the tests of the reference tables' screens share.
class ReferenceTest : public ScreenTest {
 protected:
  using Lines = std::vector<QString>;
  using Table = std::vector<std::vector<QString>>;

  // A list with all its rows; what was sent for it is forgotten.
  void openList(int module) {
    open(module);
    rows(QStringLiteral("DBGridEh"));
    statements();
  }
  // A field of all rows of the list in front.
  QStringList column(const QString& field) {
    QStringList texts;
    const QJsonArray list = rows(QStringLiteral("DBGridEh"));
    for (const QJsonValue& row : list) texts << row[field].toString();
    return texts;
  }
  // The columns that the list in front shows, as "FIELD title", with commas.
  std::string shownColumns() {
    QStringList shown;
    const QJsonArray all =
        done({{QStringLiteral("cmd"), QStringLiteral("rows")},
              {QStringLiteral("element"), QStringLiteral("DBGridEh")}})[QLatin1String("columns")]
            .toArray();
    for (const QJsonValue& column : all) {
      if (!column[QLatin1String("visible")].toBool()) continue;
      shown << column[QLatin1String("field")].toString() + QChar(' ') +
                   column[QLatin1String("title")].toString();
    }
    return shown.join(QChar(',')).toStdString();
  }
  QString focused() {
    const QJsonArray all =
        done({{QStringLiteral("cmd"), QStringLiteral("elements")}})[QLatin1String("elements")].toArray();
    for (const QJsonValue& element : all) {
      if (element[QLatin1String("focused")].toBool()) return element[QLatin1String("name")].toString();
    }
    return {};
  }
};

}  // namespace goodsbook
