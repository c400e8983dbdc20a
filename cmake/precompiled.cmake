# Precompiled headers: what nearly every source of a kind includes anyway. Each source still includes what it uses, so
# that it builds without them too.
option(KESTREL_PRECOMPILE "Precompile the headers of the standard library, the toolkit and the test framework" ON)

set(KESTREL_STD_HEADERS <algorithm> <array> <cstdint> <filesystem> <functional> <map> <memory> <optional> <set> <span>
                        <stdexcept> <string> <utility> <vector>)
set(KESTREL_QT_HEADERS <QAccessible> <QApplication> <QKeyEvent> <QMainWindow> <QMdiSubWindow> <QMenu> <QMouseEvent>
                       <QPainter> <QPainterPath> <QProxyStyle> <QScrollArea> <QStyleOption> <QTimer> <QWidget>)
set(KESTREL_TEST_HEADERS <gtest/gtest.h>)

# kestrel_precompile(TARGET STD QT TEST): the kinds of headers that the target's sources include.
function(kestrel_precompile target)
  if(NOT KESTREL_PRECOMPILE)
    return()
  endif()
  foreach(kind IN LISTS ARGN)
    target_precompile_headers(${target} PRIVATE ${KESTREL_${kind}_HEADERS})
  endforeach()
endfunction()

# Those that the platform has precompiled, for a target that is compiled with the same options.
function(kestrel_precompile_as_platform target)
  if(KESTREL_PRECOMPILE)
    target_precompile_headers(${target} REUSE_FROM kestrel_platform)
  endif()
endfunction()
