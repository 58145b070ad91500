# Compiler settings that hold for our own code on every floor.
find_program(GOODSBOOK_CCACHE ccache)
if(GOODSBOOK_CCACHE)
  # The base directory and the sloppiness make results shareable between checkouts, precompiled headers included.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${GOODSBOOK_CCACHE})
endif()
find_program(GOODSBOOK_MOLD mold)
if(GOODSBOOK_MOLD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_link_options(-fuse-ld=mold)
endif()

add_compile_options(-Wall -Wextra -Werror -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-fpch-preprocess)
  # GCC 12 sees overlapping copies in optimised std::string code where there are none (GCC bug 105651).
  add_compile_options("$<$<CONFIG:Release>:-Wno-restrict>")
endif()
add_compile_options("$<$<CONFIG:Debug>:-g1>")
add_link_options(-Wl,--no-undefined)

if(GOODSBOOK_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()
