# What stands outside: each as one target, its headers marked as system headers.
find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)

find_package(Boost 1.74 REQUIRED COMPONENTS locale thread regex)
find_package(ICU REQUIRED COMPONENTS uc i18n)
find_package(EXPAT REQUIRED)
pkg_check_modules(GLIB REQUIRED IMPORTED_TARGET glib-2.0>=2.50 gobject-2.0 gio-2.0)
pkg_check_modules(GIO_UNIX REQUIRED IMPORTED_TARGET gio-unix-2.0)
pkg_check_modules(GTK3 REQUIRED IMPORTED_TARGET gtk+-3.0>=3.22)

find_library(LOG4CPLUS_LIBRARY log4cplus REQUIRED)
add_library(third_party_log4cplus INTERFACE)
target_link_libraries(third_party_log4cplus INTERFACE ${LOG4CPLUS_LIBRARY})

find_package(wxWidgets 3.2 REQUIRED COMPONENTS html xrc xml core base)
add_library(third_party_wx INTERFACE)
target_include_directories(third_party_wx SYSTEM INTERFACE ${wxWidgets_INCLUDE_DIRS})
target_compile_definitions(third_party_wx INTERFACE ${wxWidgets_DEFINITIONS})
target_compile_options(third_party_wx INTERFACE ${wxWidgets_CXX_FLAGS})
target_link_libraries(third_party_wx INTERFACE ${wxWidgets_LIBRARIES})

find_package(Gettext REQUIRED)
find_package(Python3 REQUIRED COMPONENTS Interpreter)
