# The desktop program: one statically linked file that runs on a bare Windows.
file(GLOB MENU_SCRIPTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/shell/win32/menus/*.rc)
set_source_files_properties(
  ${CMAKE_SOURCE_DIR}/src/shell/win32/velora.rc
  PROPERTIES OBJECT_DEPENDS
             "${CMAKE_SOURCE_DIR}/lib/bis.fdb;${CMAKE_SOURCE_DIR}/lib/sys.fdb;${CMAKE_SOURCE_DIR}/lib/user.fdb;${CMAKE_SOURCE_DIR}/src/shell/win32/velora.manifest;${CMAKE_SOURCE_DIR}/src/shell/win32/resource.h;${MENU_SCRIPTS}")
add_executable(velora WIN32 ${WIN32_SOURCES})
target_include_directories(velora PRIVATE ${CMAKE_SOURCE_DIR}/lib)
target_link_libraries(velora PRIVATE velora_engine comctl32 comdlg32 gdi32 gdiplus ole32 oleacc oleaut32 shell32 user32)
# Deep evaluation runs on the machine's stack, so a large one is reserved.
target_link_options(velora PRIVATE -static -s -Wl,--stack,536870912)
