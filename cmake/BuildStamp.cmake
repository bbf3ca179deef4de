# Writes the time of the build, in the form that compilers use, as a C++ source to the file `output`.
if(DEFINED ENV{SOURCE_DATE_EPOCH}) # a time that does not depend on where and when this runs; string() knows it, too
    set(zone UTC)
endif()
string(TIMESTAMP stamp "%b %d %Y %H:%M:%S" ${zone})
string(REGEX REPLACE " 0([0-9]) " "  \\1 " stamp "${stamp}")
file(WRITE "${output}" "extern const char velmoraBuildStamp[];\nconst char velmoraBuildStamp[] = \"${stamp}\";\n")
