#include "host/data/odbc/odbc_messages.h"

#include <QCoreApplication>
#include <QHash>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

// What drivers of T-SQL servers tell beside the standard fields.
constexpr SQLSMALLINT messageStateField = -1150;
constexpr SQLSMALLINT severityField = -1151;
constexpr SQLSMALLINT lineField = -1154;

constexpr int usualErrorSeverity = 16;
constexpr int noticeSeverity = 10;
constexpr int fatalSeverity = 20;

// Numbers for errors that a server tells by SQLSTATE alone.
int numberOfState(const QString& state) {
  static const QHash<QString, int> numbers = {
      {u"42P01"_s, 208},   {u"42S02"_s, 208},   {u"42703"_s, 207},  {u"42S22"_s, 207},  {u"42601"_s, 102},
      {u"23505"_s, 2627},  {u"23502"_s, 515},   {u"23503"_s, 547},  {u"22P02"_s, 245},  {u"22001"_s, 2628},
      {u"22012"_s, 8134},  {u"40P01"_s, 1205},  {u"40001"_s, 1205}, {u"55P03"_s, 1222}, {u"42501"_s, 229},
      {u"28000"_s, 18456}, {u"28P01"_s, 18456}, {u"3D000"_s, 4060}, {u"57014"_s, 3617}, {u"HY008"_s, 3617},
      {u"HYT00"_s, -2},    {u"HYT01"_s, -2}};
  return numbers.value(state, 0);
}

std::optional<int> numberField(const OdbcHandle& handle, SQLSMALLINT record, SQLSMALLINT field) {
  SQLINTEGER value = 0;
  SQLSMALLINT length = 0;
  // The room in bytes: some drivers refuse the SQL_IS_INTEGER of numbers here.
  const SQLRETURN code =
      SQLGetDiagFieldW(handle.type(), handle.get(), record, field, &value, sizeof(value), &length);
  return SQL_SUCCEEDED(code) ? std::optional<int>(value) : std::nullopt;
}

// "[maker][driver][server]text" without what is in front.
QString withoutOrigin(QString text) {
  while (text.startsWith(u'[')) {
    const qsizetype end = text.indexOf(u']');
    if (end < 0) break;
    text.remove(0, end + 1);
  }
  for (const auto word : {"ERROR: "_L1, "NOTICE: "_L1}) {
    if (text.startsWith(word)) text.remove(0, word.size());
  }
  const qsizetype trailer = text.indexOf(u";\nError while"_s);
  if (trailer >= 0) text.truncate(trailer);
  return text.trimmed();
}

int severityOf(const OdbcHandle& handle, SQLSMALLINT record, const OdbcMessage& message, SQLSMALLINT field) {
  if (message.state.startsWith("08"_L1)) return fatalSeverity;
  const std::optional<int> told = numberField(handle, record, field);
  const bool warning = message.state.startsWith("01"_L1) || message.state.startsWith("00"_L1);
  // A driver that does not know the field may answer with nothing in it.
  if (told && *told > 0 && (*told > noticeSeverity) != warning) return *told;
  return warning ? noticeSeverity : usualErrorSeverity;
}

}  // namespace

bool OdbcMessage::tellsLostConnection() const {
  // FreeTDS: reading or writing failed, the server hung up, the process of the connection is dead.
  static constexpr std::array<int, 5> brokenNatives = {20004, 20006, 20017, 20047, 20002};
  const bool shutDown = state.startsWith("57P0"_L1);
  return state.startsWith("08"_L1) || shutDown ||
         std::find(brokenNatives.begin(), brokenNatives.end(), native) != brokenNatives.end();
}

EDatabaseError OdbcMessage::toError() const {
  return {number, std::max(severity, noticeSeverity + 1), messageState, line, text};
}

engine::Diagnostic OdbcMessage::toNotice() const {
  return {.number = number,
          .severity = severity,
          .state = messageState,
          .line = line,
          .text = text.toStdString()};
}

std::vector<OdbcMessage> messagesOf(const OdbcHandle& handle) {
  std::vector<OdbcMessage> messages;
  if (!handle) return messages;
  constexpr int mostMessages = 1000;
  std::array<SQLWCHAR, 8> sqlState{};
  std::vector<SQLWCHAR> text(4096);
  for (SQLSMALLINT record = 1; record <= mostMessages; ++record) {
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    const SQLRETURN code = SQLGetDiagRecW(handle.type(), handle.get(), record, sqlState.data(), &native,
                                          text.data(), static_cast<SQLSMALLINT>(text.size()), &length);
    if (!SQL_SUCCEEDED(code)) break;
    OdbcMessage message;
    message.state = QString::fromUtf16(reinterpret_cast<const char16_t*>(sqlState.data()));
    message.native = native;
    const QString told = QString::fromUtf16(reinterpret_cast<const char16_t*>(text.data()));
    message.text = withoutOrigin(told);
    // FreeTDS tells the severity in place of the state, and no state.
    const bool isFreeTds = told.startsWith(u'[') && told.contains("[FreeTDS]"_L1);
    message.severity = severityOf(handle, record, message, isFreeTds ? messageStateField : severityField);
    const int known = numberOfState(message.state);
    message.number = native > 100 || known == 0 ? native : known;
    const auto state = isFreeTds ? std::nullopt : numberField(handle, record, messageStateField);
    message.messageState = std::max(1, state.value_or(1));
    message.line = std::max(1, numberField(handle, record, lineField).value_or(1));
    messages.push_back(std::move(message));
  }
  return messages;
}

OdbcMessage firstError(const std::vector<OdbcMessage>& messages) {
  const auto error = std::find_if(messages.begin(), messages.end(),
                                  [](const OdbcMessage& message) { return message.isError(); });
  if (error != messages.end()) return *error;
  OdbcMessage unknown;
  unknown.severity = usualErrorSeverity;
  unknown.text = QCoreApplication::translate("OdbcMessage", "数据库驱动程序没有说明出了什么错");
  if (messages.empty()) return unknown;
  OdbcMessage first = messages.front();
  first.severity = usualErrorSeverity;
  return first;
}

}  // namespace goodsbook
