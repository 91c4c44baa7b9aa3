# What lies beside the program: the notice of what is compiled in, and on Linux the rules of "cmake --install".

# The licence of the hash library is the first comment of its header; what it says is always about what was compiled.
file(READ ${XXHASH_HEADER} notice)
string(FIND "${notice}" "*/" notice_end)
string(SUBSTRING "${notice}" 0 ${notice_end} notice)
string(REGEX REPLACE "(/\\*|\n \\*) ?" "\n" notice "${notice}")
string(STRIP "${notice}" notice)
if(NOT notice MATCHES "Copyright .*BSD 2-Clause License")
  message(FATAL_ERROR "${XXHASH_HEADER} does not begin with the licence that README.md names")
endif()
set(notices ${PROJECT_BINARY_DIR}/licenses)
file(WRITE ${notices}/xxHash.txt "${notice}\n")

if(WIN32 OR NOT TARGET quillbay)
  return()
endif()

include(GNUInstallDirs)
set(data ${CMAKE_INSTALL_DATADIR})
set(docs ${CMAKE_INSTALL_DOCDIR})
if("$CACHE{CMAKE_INSTALL_DOCDIR}" STREQUAL "")
  set(docs ${CMAKE_INSTALL_DATAROOTDIR}/doc/quillbay) # as packages are named; the default has the project's capital
endif()

# Where it may write, as an administrator may, the program keeps the mods beside itself: it gets a folder of its own.
install(TARGETS quillbay RUNTIME DESTINATION ${CMAKE_INSTALL_LIBDIR}/quillbay)
file(RELATIVE_PATH way ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR}/quillbay/quillbay)
set(link ${PROJECT_BINARY_DIR}/link/quillbay)
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/link)
file(CREATE_LINK ${way} ${link} SYMBOLIC)
install(FILES ${link} DESTINATION ${CMAKE_INSTALL_BINDIR})

set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(metainfo ${PROJECT_BINARY_DIR}/example.quillbay.Quillbay.metainfo.xml)
configure_file(${packaging}/quillbay.metainfo.xml.in ${metainfo} @ONLY)
install(FILES ${metainfo} DESTINATION ${data}/metainfo)
install(FILES ${packaging}/quillbay.desktop DESTINATION ${data}/applications)
foreach(size 16 24 32 48 64 128 256)
  install(FILES ${packaging}/icons/quillbay-${size}.png DESTINATION ${data}/icons/hicolor/${size}x${size}/apps
    RENAME quillbay.png)
endforeach()
install(FILES ${packaging}/icons/quillbay.svg DESTINATION ${data}/icons/hicolor/scalable/apps)

install(FILES README.md CHANGELOG.md LICENSE DESTINATION ${docs})
install(FILES ${notices}/xxHash.txt DESTINATION ${docs}/licenses)
