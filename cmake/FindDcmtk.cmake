# DCMTK as Debian packs it: Dcmtk::dcmdata is the data set layer with its character set support, Dcmtk::codecs the
# decoders of RLE, JPEG and JPEG-LS, Dcmtk::network associations and their services.
find_path(DCMTK_INCLUDE dcmtk/dcmdata/dctk.h)
find_library(DCMTK_DCMDATA dcmdata)
find_library(DCMTK_DCMJPEG dcmjpeg)
find_library(DCMTK_DCMJPLS dcmjpls)
find_library(DCMTK_DCMNET dcmnet)
find_library(DCMTK_OFLOG oflog)
find_library(DCMTK_OFSTD ofstd)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Dcmtk REQUIRED_VARS
  DCMTK_INCLUDE DCMTK_DCMDATA DCMTK_DCMJPEG DCMTK_DCMJPLS DCMTK_DCMNET DCMTK_OFLOG DCMTK_OFSTD)
if(Dcmtk_FOUND AND NOT TARGET Dcmtk::dcmdata)
  add_library(Dcmtk::dcmdata INTERFACE IMPORTED)
  set_target_properties(Dcmtk::dcmdata PROPERTIES
    INTERFACE_INCLUDE_DIRECTORIES "${DCMTK_INCLUDE}"
    INTERFACE_LINK_LIBRARIES "${DCMTK_DCMDATA};${DCMTK_OFLOG};${DCMTK_OFSTD}")
  add_library(Dcmtk::codecs INTERFACE IMPORTED)
  set_target_properties(Dcmtk::codecs PROPERTIES
    INTERFACE_LINK_LIBRARIES "${DCMTK_DCMJPEG};${DCMTK_DCMJPLS};Dcmtk::dcmdata")
  add_library(Dcmtk::network INTERFACE IMPORTED)
  set_target_properties(Dcmtk::network PROPERTIES
    INTERFACE_LINK_LIBRARIES "${DCMTK_DCMNET};Dcmtk::dcmdata")
endif()
