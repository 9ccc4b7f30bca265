# cmake -DHEADERS=<header;...> -DMAP=<file> -P exportsMap.cmake
#
# Writes the version script of the shared library: it lets through the members, the virtual table
# and the type information of every class that bears the export macro in an installed header, and
# the exported functions of namespaces of ours (names as the Itanium C++ ABI spells them).
set(patterns "")
foreach(header IN LISTS HEADERS)
    file(STRINGS ${header} lines REGEX "^(class|struct) LANQORENGINE_EXPORT |^namespace Lanqor")
    foreach(line IN LISTS lines)
        string(REGEX MATCH "(LANQORENGINE_EXPORT|namespace) ([A-Za-z0-9_]+)" ignored "${line}")
        set(name ${CMAKE_MATCH_2})
        string(LENGTH ${name} length)
        foreach(prefix _ZN _ZNK _ZTV _ZTI _ZTS)
            string(APPEND patterns "        ${prefix}${length}${name}*;\n")
        endforeach()
    endforeach()
endforeach()
file(WRITE ${MAP} "{\n    global:\n${patterns}    local: *;\n};\n")
