# What is installed where, and the packages that scripts/package makes of it.
include(CMakePackageConfigHelpers)
option(MORVANE_DEBIAN_LAYOUT "Install as Debian's packages do" OFF)

if(WIN32)
  set(platform windows-x86)
  set(CMAKE_INSTALL_DOCDIR doc)
elseif(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(platform linux-x64)
  set(triplet x86_64-linux-gnu)
  set(debian_architecture amd64)
else()
  set(platform linux-x86)
  set(triplet i386-linux-gnu)
  set(debian_architecture i386)
endif()
set(python_folder python)
if(MORVANE_DEBIAN_LAYOUT)
  set(CMAKE_INSTALL_LIBDIR lib/${triplet})
  set(CMAKE_INSTALL_DOCDIR share/doc/libmorvanecrypto-dev)
  set(python_folder lib/python3/dist-packages)
else()
  # The same on every system, so that a folder that is moved or packed looks the same too.
  set(CMAKE_INSTALL_LIBDIR lib)
endif()

# ---- What is installed ----
set(libraries MorvaneCrypto MorvaneCommon)
install(TARGETS ${libraries} MorvaneCryptoStatic MorvaneCommonStatic EXPORT MorvaneCryptoTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
if(WIN32)
  foreach(library IN LISTS libraries)
    install(FILES ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/${library}.lib ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/${library}.def
      DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
  endforeach()
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/morvane DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
  FILES_MATCHING PATTERN *.h)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/MorvaneCrypto)
install(EXPORT MorvaneCryptoTargets NAMESPACE MorvaneCrypto:: DESTINATION ${package_folder} COMPONENT development)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/MorvaneCryptoConfig.cmake.in
  ${PROJECT_BINARY_DIR}/MorvaneCryptoConfig.cmake
  INSTALL_DESTINATION ${package_folder} PATH_VARS CMAKE_INSTALL_LIBDIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/MorvaneCryptoConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/MorvaneCryptoConfig.cmake ${PROJECT_BINARY_DIR}/MorvaneCryptoConfigVersion.cmake
  DESTINATION ${package_folder} COMPONENT development)

file(RELATIVE_PATH prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" prefix_from_pc ${prefix_from_pc})
if(WIN32)
  set(private_libraries -lgdi32)
endif()
configure_file(${PROJECT_SOURCE_DIR}/cmake/morvanecrypto.pc.in ${PROJECT_BINARY_DIR}/morvanecrypto.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/morvanecrypto.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(MORVANE_BUILD_TOOLS)
  if(NOT WIN32)
    if(NOT MORVANE_DEBIAN_LAYOUT) # the system's own folders need no naming
      set_target_properties(morvane PROPERTIES INSTALL_RPATH $ORIGIN/../${CMAKE_INSTALL_LIBDIR})
    endif()
    install(FILES ${PROJECT_SOURCE_DIR}/docs/morvane.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
    install(FILES ${PROJECT_SOURCE_DIR}/tools/completion/morvane.bash
      DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME morvane COMPONENT tools)
  endif()
  install(TARGETS morvane RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
endif()

install(DIRECTORY ${PROJECT_SOURCE_DIR}/python/morvane DESTINATION ${python_folder} COMPONENT python
  FILES_MATCHING PATTERN *.py PATTERN __pycache__ EXCLUDE)
install(FILES README.md CHANGELOG.md SECURITY.md NOTICE.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs COMPONENT development
  FILES_MATCHING PATTERN *.md PATTERN *.svg)
install(DIRECTORY examples/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples COMPONENT development
  PATTERN CMakeLists.txt EXCLUDE)
if(EXISTS ${PROJECT_SOURCE_DIR}/LICENSE)
  install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
endif()
if(MORVANE_DEBIAN_LAYOUT)
  foreach(pair runtime=libmorvanecrypto${PROJECT_VERSION_MAJOR} development=libmorvanecrypto-dev tools=morvane
          python=python3-morvane)
    string(REPLACE "=" ";" pair ${pair})
    list(GET pair 0 component)
    list(GET pair 1 package)
    install(FILES NOTICE.md DESTINATION share/doc/${package} RENAME copyright COMPONENT ${component})
  endforeach()
endif()

# ---- Packages ----
set(CPACK_PACKAGE_NAME MorvaneCrypto)
set(CPACK_PACKAGE_VENDOR "MorvaneCrypto maintainers")
set(CPACK_PACKAGE_CONTACT "MorvaneCrypto maintainers <maintainers@morvane.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Cryptographic service library")
set(CPACK_PACKAGE_FILE_NAME MorvaneCrypto-${PROJECT_VERSION}-${platform})
set(CPACK_VERBATIM_VARIABLES ON)
if(NOT WIN32) # where the linker strips, and strip would put the time into a DLL
  set(CPACK_STRIP_FILES ON)
endif()
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/Checksums.cmake)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development tools python)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE ${debian_architecture})
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)
set(exactly "(= ${PROJECT_VERSION})")
set(runtime_package libmorvanecrypto${PROJECT_VERSION_MAJOR})

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_MULTIARCH same)
if(debian_architecture STREQUAL i386)
  # dpkg-shlibdeps would name the packages by which an amd64 machine compiles for i386. The test looks at the first number.
  set(runtime_needs "libc6 (>= 2.34), libgcc-s1 (>= 4.2)")
  set(tools_need ", ${runtime_needs}, libstdc++6 (>= 11)")
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS ${runtime_needs})
else()
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
endif()
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "The shared libraries MorvaneCrypto and MorvaneCommon.")
file(WRITE ${PROJECT_BINARY_DIR}/debian/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/triggers)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libmorvanecrypto-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtime_package} ${exactly}")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
  "Headers, static libraries, CMake and pkg-config files, documents.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME morvane)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${runtime_package} ${exactly}${tools_need}")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "Digests, ciphers, keys and signatures from the shell.")

set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-morvane)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "python3, ${runtime_package} (>= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_PYTHON_DESCRIPTION "Bindings through ctypes.")
include(CPack)
