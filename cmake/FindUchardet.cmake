# Finds the uchardet library and defines Uchardet::Uchardet.
find_path(Uchardet_INCLUDE_DIR uchardet.h PATH_SUFFIXES uchardet)
set(Uchardet_NAMES uchardet libuchardet)
# A program with a static Qt is meant to need no shared libraries.
if(TARGET Qt6::Core)
    get_target_property(Uchardet_QT_TYPE Qt6::Core TYPE)
    if(Uchardet_QT_TYPE STREQUAL "STATIC_LIBRARY")
        list(PREPEND Uchardet_NAMES libuchardet.a)
    endif()
endif()
find_library(Uchardet_LIBRARY NAMES ${Uchardet_NAMES} NAMES_PER_DIR)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Uchardet REQUIRED_VARS Uchardet_LIBRARY Uchardet_INCLUDE_DIR)
if(Uchardet_FOUND AND NOT TARGET Uchardet::Uchardet)
    add_library(Uchardet::Uchardet UNKNOWN IMPORTED)
    set_target_properties(Uchardet::Uchardet PROPERTIES
        IMPORTED_LOCATION "${Uchardet_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${Uchardet_INCLUDE_DIR}")
endif()
mark_as_advanced(Uchardet_INCLUDE_DIR Uchardet_LIBRARY)
