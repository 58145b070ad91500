#include "host/data/errors.h"

#include <utility>

namespace goodsbook {

EDatabaseError::EDatabaseError(int errorNumber, int errorSeverity, int errorState, int errorLine,
                               QString errorText)
    : number(errorNumber),
      severity(errorSeverity),
      state(errorState),
      line(errorLine),
      text(std::move(errorText)),
      utf8_(text.toUtf8()) {}

EDatabaseError::~EDatabaseError() = default;

ESaveUnknown::ESaveUnknown(const EDatabaseError& why, QString nameOfSave)
    : EDatabaseError(why), save(std::move(nameOfSave)) {}

ESaveUnknown::~ESaveUnknown() = default;

EAbort::~EAbort() = default;

}  // namespace goodsbook
