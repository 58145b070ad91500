// Messages.
#include "tests/odbc/engine_driver/copy_out.h"
#include "tests/odbc/engine_driver/handles.h"
#include "tests/odbc/engine_driver/wide_text.h"

using namespace goodsbook::engine_driver;

namespace {

// What drivers of T-SQL servers tell beside the standard fields.
constexpr SQLSMALLINT messageStateField = -1150;
constexpr SQLSMALLINT severityField = -1151;
constexpr SQLSMALLINT lineField = -1154;

const Record* recordOf(SQLHANDLE given, SQLSMALLINT number) {
  const auto& records = static_cast<Handle*>(given)->records;
  const auto at = static_cast<std::size_t>(number - 1);
  return number > 0 && at < records.size() ? &records[at] : nullptr;
}

std::u16string shown(const Record& record) {
  return u"[Goodsbook][Engine driver][T-SQL]" + toUtf16(record.message.text);
}

}  // namespace

SQLRETURN SQL_API SQLGetDiagRecW(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT number, SQLWCHAR* state,
                                 SQLINTEGER* native, SQLWCHAR* text, SQLSMALLINT room, SQLSMALLINT* length) {
  const Record* record = recordOf(handle, number);
  if (record == nullptr) return SQL_NO_DATA;
  constexpr SQLSMALLINT stateRoom = 6;
  if (state != nullptr) copyOut(record->state, state, stateRoom, nullptr);
  if (native != nullptr) *native = record->message.number;
  return copyOut(shown(*record), text, room, length);
}

SQLRETURN SQL_API SQLGetDiagFieldW(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT number, SQLSMALLINT field,
                                   SQLPOINTER value, SQLSMALLINT room, SQLSMALLINT* length) {
  if (field == SQL_DIAG_NUMBER) {
    *static_cast<SQLINTEGER*>(value) = static_cast<SQLINTEGER>(static_cast<Handle*>(handle)->records.size());
    return SQL_SUCCESS;
  }
  const Record* record = recordOf(handle, number);
  if (record == nullptr) return SQL_NO_DATA;
  if (room < 0) return SQL_ERROR;  // not even SQL_IS_INTEGER, which some drivers refuse, too
  const auto tellNumber = [&](int told) {
    *static_cast<SQLINTEGER*>(value) = told;
    return SQL_SUCCESS;
  };
  const auto tellText = [&](std::u16string_view told) {
    return copyOutBytes(told, static_cast<SQLWCHAR*>(value), room, length);
  };
  switch (field) {
    case messageStateField:
      return tellNumber(record->message.state);
    case severityField:
      return tellNumber(record->message.severity);
    case lineField:
      return tellNumber(record->message.line);
    case SQL_DIAG_NATIVE:
      return tellNumber(record->message.number);
    case SQL_DIAG_COLUMN_NUMBER:
      return tellNumber(SQL_COLUMN_NUMBER_UNKNOWN);
    case SQL_DIAG_ROW_NUMBER:
      *static_cast<SQLLEN*>(value) = SQL_ROW_NUMBER_UNKNOWN;
      return SQL_SUCCESS;
    case SQL_DIAG_SQLSTATE:
      return tellText(record->state);
    case SQL_DIAG_MESSAGE_TEXT:
      return tellText(shown(*record));
    case SQL_DIAG_CLASS_ORIGIN:
    case SQL_DIAG_SUBCLASS_ORIGIN:
      return tellText(u"ISO 9075");
    case SQL_DIAG_CONNECTION_NAME:
    case SQL_DIAG_SERVER_NAME:
      return tellText(u"");
    default:
      return SQL_ERROR;
  }
}
