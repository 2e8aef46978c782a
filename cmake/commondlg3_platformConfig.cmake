include(CMakeFindDependencyMacro)
if(POLICY CMP0167)
    cmake_policy(SET CMP0167 NEW)
endif()
find_dependency(Threads)
find_dependency(Boost)

include(${CMAKE_CURRENT_LIST_DIR}/commondlg3_platformTargets.cmake)
