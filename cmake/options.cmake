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

# One room of the house: a static library of the .cpp files in its own folder.
function(distinte_room name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
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
