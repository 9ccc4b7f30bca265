# Rooms of the library and properties that all targets share.
#
# A room is an object library "lanqor_<name>" whose include path holds itself and the rooms it
# depends on, nothing else: an include of a room above does not compile. Private headers are
# included as "<name>/header_p.h", public ones as <LanqorEngine/Header.h>.

set(LANQOR_BUILD_INCLUDE_DIR ${CMAKE_CURRENT_BINARY_DIR}/include)
set(LANQOR_ROOMS_DIR ${CMAKE_CURRENT_BINARY_DIR}/rooms)
file(MAKE_DIRECTORY ${LANQOR_BUILD_INCLUDE_DIR}/LanqorEngine)
set_property(GLOBAL PROPERTY LANQOR_PUBLIC_HEADERS "")
set_property(GLOBAL PROPERTY LANQOR_ROOMS "")

# lanqor_target(<target> [MOC]): language standard and flags of a target; MOC for one with
# Q_OBJECT classes.
function(lanqor_target target)
    set_target_properties(${target} PROPERTIES
        CXX_STANDARD 17
        CXX_STANDARD_REQUIRED ON
        CXX_EXTENSIONS OFF)
    if(ARGN STREQUAL "MOC")
        set_target_properties(${target} PROPERTIES AUTOMOC ON)
        # Makes the list of sources a file that moc's run depends on: a header that is added is
        # seen without a fresh build tree.
        configure_file(CMakeLists.txt ${target}.list.seen COPYONLY)
    endif()
    target_link_libraries(${target} PRIVATE lanqor_options)
endfunction()

# lanqor_room(<name> [ROOMS <room>...] SOURCES <source>... [HEADERS <public header>...])
#
# HEADERS are linked into the build tree as <LanqorEngine/Header.h>, installed under that name,
# and each is compiled alone by a test.
function(lanqor_room name)
    cmake_parse_arguments(room "" "" "ROOMS;SOURCES;HEADERS" ${ARGN})
    set(target lanqor_${name})
    set(include_dir ${LANQOR_ROOMS_DIR}/${name})
    file(MAKE_DIRECTORY ${include_dir}/LanqorEngine)
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${include_dir}/${name} SYMBOLIC)

    add_library(${target} OBJECT ${room_SOURCES})
    foreach(header IN LISTS room_HEADERS)
        set(source ${CMAKE_CURRENT_SOURCE_DIR}/${header})
        foreach(folder ${LANQOR_BUILD_INCLUDE_DIR} ${include_dir})
            file(CREATE_LINK ${source} ${folder}/LanqorEngine/${header} SYMBOLIC)
        endforeach()
        set_property(GLOBAL APPEND PROPERTY LANQOR_PUBLIC_HEADERS ${source})
        target_sources(${target} PRIVATE ${source})
    endforeach()
    lanqor_target(${target} MOC)
    set_target_properties(${target} PROPERTIES
        POSITION_INDEPENDENT_CODE ON
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    target_compile_definitions(${target} PRIVATE LanqorEngine_EXPORTS)
    target_include_directories(${target} PUBLIC ${include_dir})
    target_link_libraries(${target}
        PUBLIC Qt5::Core Eigen3::Eigen
        PRIVATE OpenMP::OpenMP_CXX)
    foreach(lower IN LISTS room_ROOMS)
        target_link_libraries(${target} PUBLIC lanqor_${lower})
    endforeach()
    set_property(GLOBAL APPEND PROPERTY LANQOR_ROOMS ${name})
endfunction()
