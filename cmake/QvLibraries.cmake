# The JSON and cipher libraries, static where possible, and the static link of the tool.
#
# A probe's own work is one popen; loading the shared JSON, cipher and C++ runtime libraries
# before main costs more than that, so the tool is linked statically when it can be. Debian ships
# the cipher library as an archive but the JSON library only as a shared object: its Debian
# source (scripts/fetch-jsoncpp.sh) is built here as a static library instead. bench/run.sh
# measures the difference.

set(QV_JSONCPP_SOURCE_DIR ${PROJECT_SOURCE_DIR}/third_party/jsoncpp
    CACHE PATH "Debian's source of the JSON library, built as a static library when present")
set(QV_JSONCPP_LIB ${QV_JSONCPP_SOURCE_DIR}/src/lib_json)
if(EXISTS ${QV_JSONCPP_LIB}/json_value.cpp)
  set(QV_JSONCPP_FETCHED ON)
else()
  set(QV_JSONCPP_FETCHED OFF)
endif()
pkg_check_modules(CRYPTOPP REQUIRED IMPORTED_TARGET libcrypto++)
find_library(QV_CRYPTOPP_ARCHIVE NAMES libcrypto++.a libcryptopp.a
             HINTS ${CRYPTOPP_LIBRARY_DIRS} ${CRYPTOPP_LIBDIR})

# Sanitizer runtimes cannot be linked statically. Otherwise a tool that cannot be linked
# statically is an error, not a warning lost in the configure output: it would quietly start
# several times slower.
set(QV_STATIC_LINK OFF)
if(QV_STATIC_TOOL AND NOT QV_SANITIZE AND NOT QV_FUZZ)
  if(NOT QV_JSONCPP_FETCHED)
    message(FATAL_ERROR "The JSON library's source is not in ${QV_JSONCPP_SOURCE_DIR}: run "
                        "scripts/fetch-jsoncpp.sh (as root) and configure again. "
                        "(-DQV_STATIC_TOOL=OFF builds a dynamically linked tool, which starts slower.)")
  endif()
  if(NOT QV_CRYPTOPP_ARCHIVE)
    message(FATAL_ERROR "No static cipher library (libcrypto++.a): install libcrypto++-dev.")
  endif()
  set(QV_STATIC_LINK ON)
endif()

if(QV_STATIC_LINK)
  # Only the code the tool reaches is kept, so a run maps and touches fewer pages.
  add_compile_options(-ffunction-sections -fdata-sections)
  add_link_options(-Wl,--gc-sections)
  include(CheckIPOSupported)
  check_ipo_supported(RESULT QV_LTO_SUPPORTED LANGUAGES CXX)
  set(CMAKE_INTERPROCEDURAL_OPTIMIZATION ${QV_LTO_SUPPORTED})
endif()

if(QV_JSONCPP_FETCHED)
  add_library(qv_jsoncpp STATIC ${QV_JSONCPP_LIB}/json_reader.cpp ${QV_JSONCPP_LIB}/json_value.cpp
                                ${QV_JSONCPP_LIB}/json_writer.cpp)
  target_include_directories(qv_jsoncpp SYSTEM PUBLIC ${QV_JSONCPP_SOURCE_DIR}/include)
  # Not our code: its warnings are not ours to fix.
  target_compile_options(qv_jsoncpp PRIVATE -w)
  set(QV_JSONCPP qv_jsoncpp)
else()
  pkg_check_modules(JSONCPP REQUIRED IMPORTED_TARGET jsoncpp)
  set(QV_JSONCPP PkgConfig::JSONCPP)
endif()

if(QV_CRYPTOPP_ARCHIVE)
  add_library(qv_cryptopp INTERFACE)
  target_include_directories(qv_cryptopp SYSTEM INTERFACE ${CRYPTOPP_INCLUDE_DIRS})
  target_link_libraries(qv_cryptopp INTERFACE ${QV_CRYPTOPP_ARCHIVE})
  set(QV_CRYPTOPP qv_cryptopp)
else()
  set(QV_CRYPTOPP PkgConfig::CRYPTOPP)
endif()
