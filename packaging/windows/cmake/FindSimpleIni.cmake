include(${CMAKE_CURRENT_LIST_DIR}/HeaderLibrary.cmake)
add_header_library(SimpleIni::SimpleIni SimpleIni.h)
set(SimpleIni_FOUND TRUE)
