# The native desktop program, where Qt is found: a library of all its parts, which the window tests
# use too, and the program.
find_package(Qt6 6.2 QUIET COMPONENTS Widgets PrintSupport)
if(NOT Qt6_FOUND)
  message(STATUS "Qt 6 was not found: the native desktop program is left out")
  return()
endif()

file(GLOB QT_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/shell/qt/*.cpp)
list(FILTER QT_SOURCES EXCLUDE REGEX "q_main[.]cpp$")
add_library(velora_qt STATIC ${QT_SOURCES})
target_link_libraries(velora_qt PUBLIC velora_engine Qt6::Widgets Qt6::PrintSupport)
target_compile_definitions(velora_qt PUBLIC QT_NO_KEYWORDS)
add_executable(velora-desktop ${CMAKE_SOURCE_DIR}/src/shell/qt/q_main.cpp)
target_compile_definitions(velora-desktop PRIVATE VELORA_VERSION="${PROJECT_VERSION}")
target_link_libraries(velora-desktop PRIVATE velora_qt)
install(TARGETS velora-desktop RUNTIME DESTINATION bin)
