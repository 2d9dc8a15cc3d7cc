# morvane_shared_library(NAME OBJECTS target EXPORTS list DESCRIPTION text)
#
# A shared library that exports exactly what the list says. From the list come the .def file and the import libraries on
# Windows (libNAME.dll.a, NAME.lib for Microsoft's linkers, NAME.def for who makes another), the version script and the aliases on ELF.
set(MORVANE_EXPORTS_SCRIPT ${PROJECT_SOURCE_DIR}/scripts/exports.py)

# Writes what exports.py prints for `ARGN` to `output`.
function(morvane_from_export_list output)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${Python3_EXECUTABLE} ${MORVANE_EXPORTS_SCRIPT} ${ARGN} > ${output}
    DEPENDS ${MORVANE_EXPORTS_SCRIPT} ${EXPORTS}
    VERBATIM)
endfunction()

function(morvane_shared_library NAME)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "OBJECTS;EXPORTS;DESCRIPTION" "")
  set(EXPORTS ${arg_EXPORTS})
  set(made ${CMAKE_CURRENT_BINARY_DIR}/${NAME})

  if(WIN32)
    morvane_from_export_list(${made}.def def ${EXPORTS})
    morvane_from_export_list(${made}.imports import-def ${EXPORTS} ${NAME}.dll)
    set(plain ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/${NAME}.def)
    morvane_from_export_list(${plain} plain-def ${EXPORTS} ${NAME}.dll)
    set(LIBRARY_NAME ${NAME})
    set(LIBRARY_DESCRIPTION ${arg_DESCRIPTION})
    configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${made}.rc @ONLY)
    add_library(${NAME} SHARED $<TARGET_OBJECTS:${arg_OBJECTS}> ${made}.def ${made}.imports ${plain} ${made}.rc)
    set_source_files_properties(${plain} PROPERTIES HEADER_FILE_ONLY ON)
    set_target_properties(${NAME} PROPERTIES PREFIX "")
    target_link_options(${NAME} PRIVATE -Wl,--disable-stdcall-fixup)
    target_link_libraries(${NAME} PRIVATE gdi32)
    # The linker's own import library misnames stdcall symbols; dlltool's takes its place. The .lib for Microsoft's linkers is
    # the same with the mark that /safeseh asks of every object.
    add_custom_command(TARGET ${NAME} POST_BUILD
      COMMAND ${CMAKE_DLLTOOL} --deterministic-libraries --temp-prefix ${NAME} -d ${made}.imports
              -l $<TARGET_LINKER_FILE_NAME:${NAME}>
      COMMAND ${CMAKE_OBJCOPY} -D --add-symbol @feat.00=1,local $<TARGET_LINKER_FILE_NAME:${NAME}> ${NAME}.lib
      WORKING_DIRECTORY ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}
      VERBATIM)
  else()
    string(TOUPPER ${NAME} node)
    morvane_from_export_list(${made}.map version-script ${EXPORTS} ${node}_${PROJECT_VERSION_MAJOR})
    morvane_from_export_list(${made}.aliases.ld aliases ${EXPORTS})
    add_library(${NAME} SHARED $<TARGET_OBJECTS:${arg_OBJECTS}> ${made}.map ${made}.aliases.ld)
    target_link_options(${NAME} PRIVATE -Wl,--version-script=${made}.map -Wl,-z,defs -Wl,-z,relro -Wl,-z,now ${made}.aliases.ld)
    set_target_properties(${NAME} PROPERTIES
      VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} LINK_DEPENDS "${made}.map;${made}.aliases.ld")
  endif()
  # One library finds another beside itself, in the build tree as where it is installed: a path that the installation has to
  # exchange would be filled up with colons, and an empty entry is the current folder.
  set_target_properties(${NAME} PROPERTIES LINKER_LANGUAGE CXX BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH $ORIGIN)
  target_link_libraries(${NAME} PRIVATE morvane_core_rules)
  target_include_directories(${NAME} INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
endfunction()
