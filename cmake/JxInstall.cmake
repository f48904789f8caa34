# What cmake --install installs where. No installed file holds an absolute path: the folder may be moved.

include(CMakePackageConfigHelpers)

set(jx_package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/jxodbc)
set(jx_pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS jxutl08 odbcinst EXPORT jxodbcTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS jxsetup LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})

# Beside a distribution's library of that name, never instead of it: in a folder where no loader looks. A closed image says
# that it wants it where the loader does look. The linker's name is that of libodbcinst.so.1.
set(JX_ODBCINST2_FOLDER ${CMAKE_INSTALL_LIBDIR}/jxodbc)
if(JX_ODBCINST2_IN_LIBDIR)
  set(JX_ODBCINST2_FOLDER ${CMAKE_INSTALL_LIBDIR})
endif()
install(TARGETS odbcinst2 EXPORT jxodbcTargets LIBRARY DESTINATION ${JX_ODBCINST2_FOLDER} NAMELINK_SKIP)

install(DIRECTORY include/jxodbc include/jxodbc3 DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

install(EXPORT jxodbcTargets NAMESPACE jxodbc:: DESTINATION ${jx_package_folder})
configure_package_config_file(cmake/jxodbcConfig.cmake.in jxodbcConfig.cmake INSTALL_DESTINATION ${jx_package_folder}
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(jxodbcConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/jxodbcConfig.cmake ${PROJECT_BINARY_DIR}/jxodbcConfigVersion.cmake
  DESTINATION ${jx_package_folder})

# The pkg-config files find the installation relative to their own folder.
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR} OR IS_ABSOLUTE ${CMAKE_INSTALL_INCLUDEDIR})
  message(FATAL_ERROR "CMAKE_INSTALL_LIBDIR and CMAKE_INSTALL_INCLUDEDIR must be relative to the install prefix")
endif()
file(RELATIVE_PATH JX_PREFIX_FROM_PKGCONFIG /${jx_pkgconfig_folder} /)
string(REGEX REPLACE "/$" "" JX_PREFIX_FROM_PKGCONFIG "${JX_PREFIX_FROM_PKGCONFIG}")
foreach(name IN ITEMS jxodbc-jxutl08 jxodbc-odbcinst jxodbc3)
  configure_file(cmake/${name}.pc.in ${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${jx_pkgconfig_folder})
endforeach()

foreach(section IN ITEMS 3 5)
  file(GLOB jx_man_pages CONFIGURE_DEPENDS docs/man/*.${section})
  install(FILES ${jx_man_pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section})
endforeach()
if(TARGET odbcadmin)
  install(FILES docs/man/odbcadmin.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES completions/odbcadmin.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
    RENAME odbcadmin)
  install(FILES completions/_odbcadmin DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
  install(FILES completions/odbcadmin.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endif()
if(TARGET xodbcadmin)
  install(FILES docs/man/xodbcadmin.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES src/odbcadmin/desktop/xodbcadmin.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES src/odbcadmin/desktop/xodbcadmin.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
endif()
install(FILES LICENSE README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
file(GLOB jx_documents CONFIGURE_DEPENDS docs/*.md)
install(FILES ${jx_documents} DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs)
