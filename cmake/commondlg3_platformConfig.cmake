include(CMakeFindDependencyMacro)
find_dependency(Threads)
find_dependency(Boost)

include(${CMAKE_CURRENT_LIST_DIR}/commondlg3_platformTargets.cmake)
