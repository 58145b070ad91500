find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets Network PrintSupport Svg LinguistTools Test)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
# Connects without a context object and silent ASCII casts are where Qt programs go wrong.
add_compile_definitions(QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING QT_NO_KEYWORDS QT_NO_CONTEXTLESS_CONNECT
                        QT_NO_FOREACH)

find_package(SQLite3 REQUIRED)
find_package(ODBC REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(SODIUM REQUIRED IMPORTED_TARGET libsodium)
pkg_check_modules(ICU REQUIRED IMPORTED_TARGET icu-i18n icu-uc)
pkg_check_modules(XLSXWRITER REQUIRED IMPORTED_TARGET xlsxwriter)
pkg_check_modules(LIBZIP REQUIRED IMPORTED_TARGET libzip)
pkg_check_modules(LIBJPEG REQUIRED IMPORTED_TARGET libjpeg)
find_package(Threads REQUIRED)

# The headers of Qt that nearly every unit above the engine reads.
set(GOODSBOOK_QT_PCH <QtWidgets> <QtCore>)
