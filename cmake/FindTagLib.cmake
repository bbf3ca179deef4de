# Finds TagLib and defines TagLib::TagLib.
find_path(TagLib_INCLUDE_DIR tfile.h PATH_SUFFIXES taglib)
set(TagLib_NAMES tag libtag)
# A program with a static Qt is meant to need no shared libraries.
if(TARGET Qt6::Core)
    get_target_property(TagLib_QT_TYPE Qt6::Core TYPE)
    if(TagLib_QT_TYPE STREQUAL "STATIC_LIBRARY")
        list(PREPEND TagLib_NAMES libtag.a)
    endif()
endif()
find_library(TagLib_LIBRARY NAMES ${TagLib_NAMES} NAMES_PER_DIR)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(TagLib REQUIRED_VARS TagLib_LIBRARY TagLib_INCLUDE_DIR)
if(TagLib_FOUND AND NOT TARGET TagLib::TagLib)
    add_library(TagLib::TagLib UNKNOWN IMPORTED)
    set_target_properties(TagLib::TagLib PROPERTIES
        IMPORTED_LOCATION "${TagLib_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${TagLib_INCLUDE_DIR}")
endif()
mark_as_advanced(TagLib_INCLUDE_DIR TagLib_LIBRARY)
