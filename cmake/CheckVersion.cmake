# The newest entry of the changelog must be about the version that is built.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
file(STRINGS ${PROJECT_SOURCE_DIR}/CHANGELOG.md changelog_entries REGEX "^## \\[[0-9]")
list(GET changelog_entries 0 newest_entry)
if(NOT newest_entry MATCHES "^## \\[${PROJECT_VERSION}\\]")
  message(FATAL_ERROR "The version is ${PROJECT_VERSION}, but CHANGELOG.md begins with \"${newest_entry}\"")
endif()
