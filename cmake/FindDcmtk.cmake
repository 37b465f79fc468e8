# DCMTK as Debian packs it: Dcmtk::dcmdata is the data set layer with its character set support.
find_path(DCMTK_INCLUDE dcmtk/dcmdata/dctk.h)
find_library(DCMTK_DCMDATA dcmdata)
find_library(DCMTK_OFLOG oflog)
find_library(DCMTK_OFSTD ofstd)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Dcmtk REQUIRED_VARS DCMTK_INCLUDE DCMTK_DCMDATA DCMTK_OFLOG DCMTK_OFSTD)
if(Dcmtk_FOUND AND NOT TARGET Dcmtk::dcmdata)
  add_library(Dcmtk::dcmdata INTERFACE IMPORTED)
  set_target_properties(Dcmtk::dcmdata PROPERTIES
    INTERFACE_INCLUDE_DIRECTORIES "${DCMTK_INCLUDE}"
    INTERFACE_LINK_LIBRARIES "${DCMTK_DCMDATA};${DCMTK_OFLOG};${DCMTK_OFSTD}")
endif()
