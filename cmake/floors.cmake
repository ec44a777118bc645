# The floors of the library as src/halvard/floors.txt lists them, lowest first:
# HALVARD_FLOORS holds the folders, HALVARD_FLOOR_<folder> the floors below each that it may use.
# scripts/check-layers.sh reads the same table for the includes.
set(halvard_floor_table ${PROJECT_SOURCE_DIR}/src/halvard/floors.txt)
set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
             ${halvard_floor_table})
set(HALVARD_FLOORS "")
file(STRINGS ${halvard_floor_table} halvard_floor_lines)
foreach(line IN LISTS halvard_floor_lines)
  string(REGEX REPLACE "#.*" "" line "${line}")
  if(line MATCHES "^[ \t]*$")
    continue()
  endif()
  if(NOT line MATCHES "^[ \t]*([a-z_]+)[ \t]*:(.*)$")
    message(FATAL_ERROR "${halvard_floor_table}: \"${line}\" is not \"folder: floors below\"")
  endif()
  set(folder ${CMAKE_MATCH_1})
  separate_arguments(below UNIX_COMMAND "${CMAKE_MATCH_2}")
  list(APPEND HALVARD_FLOORS ${folder})
  set(HALVARD_FLOOR_${folder} ${below})
endforeach()

# The whole library, as every program and test links it.
add_library(halvard INTERFACE)

# One folder's library from its sources, all of them in halvard/<folder>/, linked to the floors
# below it alone: a call into a floor above, or into one the table does not give it, is left
# unresolved by this library's own link check (halvard_check_floors).
function(halvard_floor folder)
  if(NOT folder IN_LIST HALVARD_FLOORS)
    message(FATAL_ERROR "halvard/${folder}/ has no line in ${halvard_floor_table}")
  endif()
  foreach(source IN LISTS ARGN)
    if(NOT source MATCHES "^halvard/${folder}/")
      message(FATAL_ERROR "${source} is not a file of halvard/${folder}/")
    endif()
  endforeach()
  add_library(halvard-${folder} STATIC ${ARGN})
  target_include_directories(halvard-${folder} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
  target_compile_features(halvard-${folder} PUBLIC cxx_std_20)
  foreach(below IN LISTS HALVARD_FLOOR_${folder})
    target_link_libraries(halvard-${folder} PUBLIC halvard-${below})
  endforeach()
  halvard_warnings(halvard-${folder})
  target_link_libraries(halvard INTERFACE halvard-${folder})
endfunction()

# Every floor of the table has its library; with the tests, each floor is also linked whole into
# a program of its own with only the floors below it, so that a call into a floor it may not use
# fails the build (an include the table forbids is scripts/check-layers.sh's to find).
function(halvard_check_floors)
  foreach(folder IN LISTS HALVARD_FLOORS)
    if(NOT TARGET halvard-${folder})
      message(FATAL_ERROR "halvard/${folder}/ is in ${halvard_floor_table} but builds no library")
    endif()
    if(HALVARD_TESTS AND CMAKE_VERSION VERSION_GREATER_EQUAL 3.24)
      add_executable(halvard-floor-link-${folder} ${PROJECT_SOURCE_DIR}/cmake/floor_link_main.cpp)
      target_link_libraries(halvard-floor-link-${folder} PRIVATE
                            "$<LINK_LIBRARY:WHOLE_ARCHIVE,halvard-${folder}>")
    endif()
  endforeach()
endfunction()
