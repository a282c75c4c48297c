# Plays one golden script and compares what quillon-script prints with what it should.
#
#   cmake -DSCRIPT_HOST=<quillon-script> -DSCRIPT=<dir>/NAME.jsonl -P run_golden.cmake
#
# Beside NAME.jsonl:
#   NAME.expected  standard output, required
#   NAME.args      optional: extra command-line words, such as --locale de_DE or --trace
#   NAME.stderr    optional: standard error; without it, standard error must be empty
#   NAME.status    optional: the exit status; without it, 0
# The output is kept as NAME.actual in the working directory, to compare or to adopt.

cmake_minimum_required(VERSION 3.25)

foreach(var SCRIPT_HOST SCRIPT)
  if(NOT DEFINED ${var})
    message(FATAL_ERROR "run_golden.cmake needs -D${var}=...")
  endif()
endforeach()

get_filename_component(dir "${SCRIPT}" DIRECTORY)
get_filename_component(name "${SCRIPT}" NAME_WE)
set(base "${dir}/${name}")

if(NOT EXISTS "${base}.expected")
  message(FATAL_ERROR "${name}: no ${name}.expected beside the script")
endif()

set(extra_args "")
if(EXISTS "${base}.args")
  file(READ "${base}.args" args_text)
  string(STRIP "${args_text}" args_text)
  separate_arguments(extra_args UNIX_COMMAND "${args_text}")
endif()

execute_process(
  COMMAND "${SCRIPT_HOST}" ${extra_args} "${SCRIPT}"
  OUTPUT_VARIABLE actual_out
  ERROR_VARIABLE actual_err
  RESULT_VARIABLE actual_status)

file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/${name}.actual" "${actual_out}")

file(READ "${base}.expected" expected_out)
set(expected_err "")
if(EXISTS "${base}.stderr")
  file(READ "${base}.stderr" expected_err)
endif()
set(expected_status 0)
if(EXISTS "${base}.status")
  file(READ "${base}.status" expected_status)
  string(STRIP "${expected_status}" expected_status)
endif()

# Prints the lines of two texts from the first one that differs: "-" expected, "+" actual,
# with the two lines before it for context.
function(report_difference what expected actual)
  # Lines become list elements: brackets and semicolons stand aside while they are split.
  string(ASCII 1 lb)
  string(ASCII 2 rb)
  string(ASCII 3 sc)
  foreach(var expected actual)
    string(REGEX REPLACE "\n$" "" ${var} "${${var}}")
    string(REPLACE "[" "${lb}" ${var} "${${var}}")
    string(REPLACE "]" "${rb}" ${var} "${${var}}")
    string(REPLACE ";" "${sc}" ${var} "${${var}}")
    string(REPLACE "\n" ";" ${var}_lines "${${var}}")
  endforeach()
  list(LENGTH expected_lines n_expected)
  list(LENGTH actual_lines n_actual)
  set(first 0)
  while(first LESS n_expected AND first LESS n_actual)
    list(GET expected_lines ${first} e)
    list(GET actual_lines ${first} a)
    if(NOT e STREQUAL a)
      break()
    endif()
    math(EXPR first "${first} + 1")
  endwhile()
  math(EXPR line_number "${first} + 1")
  set(text "${what} differs from line ${line_number} on:\n")
  math(EXPR context "${first} - 2")
  if(context LESS 0)
    set(context 0)
  endif()
  math(EXPR last "${first} - 1")
  if(context LESS_EQUAL last)
    foreach(i RANGE ${context} ${last})
      list(GET expected_lines ${i} line)
      string(APPEND text "  ${line}\n")
    endforeach()
  endif()
  set(shown 0)
  set(i ${first})
  while(i LESS n_expected AND shown LESS 20)
    list(GET expected_lines ${i} line)
    string(APPEND text "- ${line}\n")
    math(EXPR i "${i} + 1")
    math(EXPR shown "${shown} + 1")
  endwhile()
  set(shown 0)
  set(i ${first})
  while(i LESS n_actual AND shown LESS 20)
    list(GET actual_lines ${i} line)
    string(APPEND text "+ ${line}\n")
    math(EXPR i "${i} + 1")
    math(EXPR shown "${shown} + 1")
  endwhile()
  string(REPLACE "${lb}" "[" text "${text}")
  string(REPLACE "${rb}" "]" text "${text}")
  string(REPLACE "${sc}" ";" text "${text}")
  message("${text}")
endfunction()

set(failed FALSE)
if(NOT actual_out STREQUAL expected_out)
  report_difference("${name}: standard output" "${expected_out}" "${actual_out}")
  set(failed TRUE)
endif()
if(NOT actual_err STREQUAL expected_err)
  report_difference("${name}: standard error" "${expected_err}" "${actual_err}")
  set(failed TRUE)
endif()
if(NOT actual_status STREQUAL expected_status)
  message("${name}: exit status ${actual_status}, expected ${expected_status}")
  set(failed TRUE)
endif()
if(failed)
  message(FATAL_ERROR "${name}: golden output differs (actual output in "
                      "${CMAKE_CURRENT_BINARY_DIR}/${name}.actual)")
endif()
