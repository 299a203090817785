# FindRDKit: finds the cheminformatics library RDKit, whose packages contain no CMake configuration.
#
#   find_package(RDKit [REQUIRED] COMPONENTS SmilesParse FileParsers ...)
#
# A component is a library name without "libRDKit". GraphMol, RDGeneral and RDGeometryLib are always included. Sets
# RDKit_FOUND and RDKit_INCLUDE_DIRS, and defines the target RDKit::<component> for each component.
find_path(RDKit_INCLUDE_DIR GraphMol/ROMol.h PATH_SUFFIXES rdkit HINTS ENV RDBASE PATHS ENV CONDA_PREFIX)
# RDKit's headers include Boost headers.
find_package(Boost QUIET)

set(RDKit_LIBRARIES "")
list(APPEND RDKit_FIND_COMPONENTS GraphMol RDGeneral RDGeometryLib)
list(REMOVE_DUPLICATES RDKit_FIND_COMPONENTS)
foreach(component IN LISTS RDKit_FIND_COMPONENTS)
  find_library(RDKit_${component}_LIBRARY RDKit${component} HINTS ENV RDBASE PATHS ENV CONDA_PREFIX PATH_SUFFIXES lib)
  mark_as_advanced(RDKit_${component}_LIBRARY)
  if(RDKit_${component}_LIBRARY)
    set(RDKit_${component}_FOUND TRUE)
  endif()
endforeach()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(RDKit REQUIRED_VARS RDKit_INCLUDE_DIR Boost_INCLUDE_DIRS HANDLE_COMPONENTS)
mark_as_advanced(RDKit_INCLUDE_DIR)

if(RDKit_FOUND)
  set(RDKit_INCLUDE_DIRS ${RDKit_INCLUDE_DIR} ${Boost_INCLUDE_DIRS})
  foreach(component IN LISTS RDKit_FIND_COMPONENTS)
    if(NOT TARGET RDKit::${component})
      add_library(RDKit::${component} UNKNOWN IMPORTED)
      set_target_properties(RDKit::${component} PROPERTIES IMPORTED_LOCATION ${RDKit_${component}_LIBRARY}
                                                           INTERFACE_INCLUDE_DIRECTORIES "${RDKit_INCLUDE_DIRS}")
    endif()
  endforeach()
endif()
