#pragma once

// The declarations of the functions that the ODBC manager looks for, to be seen from outside.
#pragma GCC visibility push(default)
#include <sql.h>
#include <sqlext.h>
#pragma GCC visibility pop
