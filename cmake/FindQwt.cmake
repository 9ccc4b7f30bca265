# Finds Qwt built for Qt 5, the plotting library of the lanqor program. Defines Qwt::Qwt.
find_path(Qwt_INCLUDE_DIR qwt_plot_renderer.h PATH_SUFFIXES qwt qwt-qt5 qt5/qwt)
find_library(Qwt_LIBRARY NAMES qwt-qt5 qwt)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Qwt REQUIRED_VARS Qwt_LIBRARY Qwt_INCLUDE_DIR)
mark_as_advanced(Qwt_INCLUDE_DIR Qwt_LIBRARY)

if(Qwt_FOUND AND NOT TARGET Qwt::Qwt)
    add_library(Qwt::Qwt UNKNOWN IMPORTED)
    set_target_properties(Qwt::Qwt PROPERTIES
        IMPORTED_LOCATION "${Qwt_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${Qwt_INCLUDE_DIR}")
endif()
