# The lint: the target `lint` runs clang-tidy over src/.
#
# Most of a run's time goes into the libraries' headers, which each source file brings along anew, so the files of a
# folder are looked at together, some at a time, as one unit. A unit must have UnifiedSource in its name: only then does
# the analyzer take the included files for code. Names in the unnamed namespaces of one folder have to differ for this.
set(LINT_FILES_PER_UNIT 20)
find_program(CLANG_TIDY clang-tidy REQUIRED)
file(GLOB_RECURSE lint_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/*.h)
add_custom_target(lint)

# One unit's files.
function(lint_unit folder number files)
  set(unit ${PROJECT_BINARY_DIR}/lint/UnifiedSource_${folder}_${number}.cpp)
  list(TRANSFORM files REPLACE "(.+)" "#include \"\\1\"\n" OUTPUT_VARIABLE lines)
  list(JOIN lines "" text)
  file(CONFIGURE OUTPUT ${unit} CONTENT "${text}" @ONLY)
  # Never built: it brings the unit's compile command into the database that clang-tidy reads.
  add_library(lint_${folder}_${number} OBJECT EXCLUDE_FROM_ALL ${unit})
  set_target_properties(lint_${folder}_${number} PROPERTIES AUTOMOC OFF)
  target_link_libraries(lint_${folder}_${number} PRIVATE veldrin_${folder})
  target_compile_definitions(lint_${folder}_${number} PRIVATE
    $<TARGET_PROPERTY:veldrin_${folder},COMPILE_DEFINITIONS>)
  set(stamp ${unit}.stamp)
  add_custom_command(OUTPUT ${stamp}
    COMMAND ${CLANG_TIDY} --quiet --config-file=${PROJECT_SOURCE_DIR}/.clang-tidy -p ${PROJECT_BINARY_DIR} ${unit}
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS ${unit} ${files} ${lint_headers} ${PROJECT_SOURCE_DIR}/.clang-tidy
    COMMENT "Lint of ${folder}, ${number}" VERBATIM)
  set_property(TARGET lint APPEND PROPERTY LINT_STAMPS ${stamp})
endfunction()

foreach(folder base engine pictures desktop controls catalogue folders browse records find show output shell)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.cpp)
  set(number 0)
  while(sources)
    math(EXPR number "${number} + 1")
    list(SUBLIST sources 0 ${LINT_FILES_PER_UNIT} files)
    list(REMOVE_ITEM sources ${files})
    lint_unit(${folder} ${number} "${files}")
  endwhile()
endforeach()

get_target_property(stamps lint LINT_STAMPS)
add_custom_target(lint_units DEPENDS ${stamps})
add_dependencies(lint lint_units)
