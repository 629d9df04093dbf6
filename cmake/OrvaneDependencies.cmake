# Every library the project is built on, found once.

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
find_package(ZLIB REQUIRED)

set(orvane_qt_components Core Network Concurrent Gui DBus)
if(ORVANE_WINDOWS)
  list(APPEND orvane_qt_components Widgets Svg Test WebEngineCore WebEngineWidgets WebChannel Multimedia)
endif()
find_package(Qt6 6.4 REQUIRED COMPONENTS ${orvane_qt_components})
find_package(QCoro6 0.8 REQUIRED COMPONENTS Core Network)

pkg_check_modules(FFMPEG REQUIRED IMPORTED_TARGET libavformat libavcodec libavutil libswresample libswscale)
pkg_check_modules(X264 REQUIRED IMPORTED_TARGET x264)
pkg_check_modules(FFTW REQUIRED IMPORTED_TARGET fftw3)
pkg_check_modules(FFTWF REQUIRED IMPORTED_TARGET fftw3f)
find_path(LAME_INCLUDE_DIR lame/lame.h REQUIRED)
find_library(LAME_LIBRARY mp3lame REQUIRED)
add_library(Lame::Lame UNKNOWN IMPORTED)
set_target_properties(Lame::Lame PROPERTIES
  IMPORTED_LOCATION "${LAME_LIBRARY}" INTERFACE_INCLUDE_DIRECTORIES "${LAME_INCLUDE_DIR}")

if(ORVANE_TESTS)
  find_package(GTest REQUIRED)
  find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
endif()
# Second opinions for tests, benchmarks and the demonstration: nothing that a user gets links them.
if(ORVANE_TESTS OR ORVANE_BENCHMARKS OR ORVANE_WINDOWS)
  pkg_check_modules(EBUR128 REQUIRED IMPORTED_TARGET libebur128)
  pkg_check_modules(TAGLIB REQUIRED IMPORTED_TARGET taglib)
endif()
if(ORVANE_BENCHMARKS)
  find_package(benchmark REQUIRED)
endif()
