# lanqor_public_headers(<header>...)
#
# Names the public headers of a room. They are linked into the build tree as
# <LanqorEngine/Header.h>, installed under that name, and each is compiled alone by a test.
set_property(GLOBAL PROPERTY LANQOR_PUBLIC_HEADERS "")
set(LANQOR_BUILD_INCLUDE_DIR ${CMAKE_CURRENT_BINARY_DIR}/include)
file(MAKE_DIRECTORY ${LANQOR_BUILD_INCLUDE_DIR}/LanqorEngine)

function(lanqor_public_headers)
    foreach(header IN LISTS ARGN)
        set(source ${CMAKE_CURRENT_SOURCE_DIR}/${header})
        get_filename_component(name ${header} NAME)
        file(CREATE_LINK ${source} ${LANQOR_BUILD_INCLUDE_DIR}/LanqorEngine/${name}
            SYMBOLIC COPY_ON_ERROR)
        set_property(GLOBAL APPEND PROPERTY LANQOR_PUBLIC_HEADERS ${source})
        target_sources(lanqor_objects PRIVATE ${source})
    endforeach()
endfunction()
