# morvane_static_library(NAME OBJECTS target EXPORTS list)
#
# The target NAMEStatic: a static library libNAME.a of the same objects as the shared one. The linker makes the aliases of a
# shared library; here they are added to the objects that define what they stand for.
function(morvane_static_library NAME)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "OBJECTS;EXPORTS" "")
  set(target ${NAME}Static)
  add_library(${target} STATIC $<TARGET_OBJECTS:${arg_OBJECTS}>)
  set_target_properties(${target} PROPERTIES OUTPUT_NAME ${NAME} PREFIX lib SUFFIX .a LINKER_LANGUAGE C)
  target_include_directories(${target} INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  if(WIN32)
    target_compile_definitions(${target} INTERFACE MORVANE_STATIC)
  endif()
  set(script ${PROJECT_SOURCE_DIR}/scripts/static_aliases.py)
  set_target_properties(${target} PROPERTIES LINK_DEPENDS "${script};${MORVANE_EXPORTS_SCRIPT};${arg_EXPORTS}")
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND ${Python3_EXECUTABLE} ${script} ${arg_EXPORTS} $<TARGET_FILE:${target}>
            ${CMAKE_NM} ${CMAKE_OBJCOPY} ${CMAKE_AR} $<TARGET_OBJECTS:${arg_OBJECTS}>
    COMMAND_EXPAND_LISTS VERBATIM)
endfunction()
