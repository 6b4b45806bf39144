# The one target that carries warnings and sanitizers; everything of ours links it.
add_library(distinte_options INTERFACE)
target_compile_options(distinte_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wconversion -Wno-sign-conversion
  -Wcast-align -Wnull-dereference -Wimplicit-fallthrough -Werror
  # At -O3 GCC 12 warns of copies inside std::string that can not happen (its bugs 105329, 105651 and others).
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-restrict;-Wno-stringop-overflow;-Wno-array-bounds>)
target_include_directories(distinte_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
if(DISTINTE_SANITIZE)
  target_compile_options(distinte_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer
    # GCC's own advice: the sanitizers' code confuses this warning. The other presets keep it.
    -Wno-maybe-uninitialized)
  target_link_options(distinte_options INTERFACE -fsanitize=address,undefined)
endif()
if(DISTINTE_FUZZ)
  target_compile_options(distinte_options INTERFACE
    -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(distinte_options INTERFACE -fsanitize=address,undefined)
endif()

# What makes a fault harder to use, in every build that may be installed. The sanitizers do more, in their own way.
if(NOT DISTINTE_SANITIZE AND NOT DISTINTE_FUZZ)
  include(CheckCXXCompilerFlag)
  include(CheckPIESupported)
  check_pie_supported(LANGUAGES CXX)
  target_compile_options(distinte_options INTERFACE -fstack-protector-strong)
  check_cxx_compiler_flag(-fstack-clash-protection DISTINTE_HAS_STACK_CLASH_PROTECTION)
  if(DISTINTE_HAS_STACK_CLASH_PROTECTION)
    target_compile_options(distinte_options INTERFACE -fstack-clash-protection)
  endif()
  # Control-flow enforcement, where the processor's family has it.
  check_cxx_compiler_flag(-fcf-protection=full DISTINTE_HAS_CF_PROTECTION)
  if(DISTINTE_HAS_CF_PROTECTION)
    target_compile_options(distinte_options INTERFACE -fcf-protection=full)
  endif()
  # The library's checked functions need an optimising compiler, and warn without.
  string(TOUPPER "${CMAKE_BUILD_TYPE}" type)
  if("${CMAKE_CXX_FLAGS} ${CMAKE_CXX_FLAGS_${type}}" MATCHES "-O[1-9sz]")
    target_compile_options(distinte_options INTERFACE -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  endif()
  # Everything is bound at the start, and what was bound is read only from then on.
  target_link_options(distinte_options INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
endif()

# One room of the house: a static library of the .cpp files in its own folder and the folders in it.
function(distinte_room name)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(sources)
    add_library(${name} STATIC ${sources})
    target_link_libraries(${name} PUBLIC distinte_options ${ARGN})
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE distinte_options ${ARGN})
  endif()
endfunction()

# The tests of one folder: one executable of all its .cpp files, its cases found by CTest.
function(distinte_tests name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(sources)
    add_executable(${name} ${sources})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    # What is tested is optimised as the preset says; the tests themselves need to compile fast.
    target_compile_options(${name} PRIVATE -O0 -g1)
    target_link_libraries(${name} PRIVATE distinte_options ${ARGN} GTest::gtest GTest::gtest_main)
    # With a server to test on, one test waits for another that has its tables.
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 900 ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
  endif()
endfunction()

# Qt's headers are most of what the compiler reads in the rooms over Qt: they are read once.
function(distinte_precompile_qt target)
  target_precompile_headers(${target} PRIVATE
    <algorithm> <functional> <memory> <optional> <string> <string_view> <vector>
    <QAbstractItemView> <QApplication> <QHeaderView> <QJsonArray> <QJsonDocument> <QJsonObject> <QLineEdit> <QMainWindow>
    <QMdiArea> <QMouseEvent> <QPainter> <QString> <QTreeView> <QVBoxLayout> <QWidget>)
endfunction()
