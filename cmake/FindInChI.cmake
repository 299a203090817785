# FindInChI: finds the library of the International Chemical Identifier, whose packages contain no CMake configuration.
# Sets InChI_FOUND and defines the target InChI::InChI.
find_path(InChI_INCLUDE_DIR inchi_api.h PATH_SUFFIXES inchi)
find_library(InChI_LIBRARY inchi)
mark_as_advanced(InChI_INCLUDE_DIR InChI_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(InChI REQUIRED_VARS InChI_LIBRARY InChI_INCLUDE_DIR)
if(InChI_FOUND AND NOT TARGET InChI::InChI)
  add_library(InChI::InChI UNKNOWN IMPORTED)
  set_target_properties(InChI::InChI PROPERTIES IMPORTED_LOCATION ${InChI_LIBRARY}
                                                INTERFACE_INCLUDE_DIRECTORIES ${InChI_INCLUDE_DIR})
endif()
