# Headers of libraries that nearly every file reads, compiled once for all files: reading them is most of what compiling
# takes. An include that a file forgets is noticed by the builds without: debug, scripts/tidy and whoever builds with
# CMake's own settings.
if(NOT INTERACTIVE_PRECOMPILED)
  return()
endif()

# Those that many files read and no more: what is precompiled is loaded for each file, which takes time by its size.
set(headers_of_libraries
  <QApplication> <QByteArray> <QFileInfo> <QHash> <QKeyEvent> <QList> <QMap> <QObject> <QPainter> <QPointer>
  <QRegularExpression> <QString> <QStringList> <QTimer> <QVariant> <QWidget>
  <algorithm> <array> <atomic> <chrono> <cmath> <condition_variable> <deque> <functional> <map> <memory> <mutex>
  <optional> <set> <stdexcept> <string> <thread> <utility> <vector>)
if(TARGET test_support)
  target_precompile_headers(test_support PRIVATE
    ${headers_of_libraries} <spdlog/logger.h> <gtest/gtest.h>)
endif()
# What is precompiled is taken only by files that have all of its macros.
set_target_properties(platform PROPERTIES DEFINE_SYMBOL "")
target_precompile_headers(platform PRIVATE ${headers_of_libraries})

# reuse_precompiled(FOLDER): the targets of the folder, and of those below it, take what was compiled once.
function(reuse_precompiled folder)
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target IN LISTS targets)
    get_target_property(type ${target} TYPE)
    get_target_property(libraries ${target} LINK_LIBRARIES)
    if(target MATCHES "^(platform|test_support)$" OR NOT type MATCHES "LIBRARY|EXECUTABLE" OR NOT libraries)
      continue()
    elseif(libraries MATCHES "test_support")
      target_precompile_headers(${target} REUSE_FROM test_support)
    else()
      target_precompile_headers(${target} REUSE_FROM platform)
    endif()
  endforeach()
  get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(each IN LISTS folders)
    reuse_precompiled(${each})
  endforeach()
endfunction()
reuse_precompiled(${CMAKE_SOURCE_DIR})
