# Runs the real program as a shell would: streams, files and exit statuses.
# -DPROGRAM=<command, with an emulator in front where there is one> -DFOLDER=<for its files>
cmake_minimum_required(VERSION 3.21)
file(REMOVE_RECURSE "${FOLDER}")
file(MAKE_DIRECTORY "${FOLDER}")

# run(<status> <argument>...): the program's output goes to `out` and `err`.
macro(run expected)
  execute_process(
    COMMAND ${PROGRAM} ${ARGN}
    WORKING_DIRECTORY "${FOLDER}"
    RESULT_VARIABLE status
    OUTPUT_VARIABLE out
    ERROR_VARIABLE err)
  if(NOT status STREQUAL "${expected}")
    message(SEND_ERROR "tiltpole ${ARGN}: exit status ${status}, expected ${expected}\n${err}")
  endif()
endmacro()

function(expect_in text part)
  string(FIND "${text}" "${part}" place)
  if(place EQUAL -1)
    message(SEND_ERROR "'${part}' is missing in:\n${text}")
  endif()
endfunction()

function(expect_no_file name)
  if(EXISTS "${FOLDER}/${name}")
    message(SEND_ERROR "${name} was written")
  endif()
endfunction()

run(0 --version)
expect_in("${out}" "tiltpole ")
run(0 --help)
expect_in("${out}" "measure")
run(2)
run(2 measure)

# The whole way, with a name that no single code page can hold.
set(session "Blöcke-点.csv")
run(0 simulate --seed 3 --points 50 -o "${session}" --true-params true.txt)
run(0 params true.txt)
run(0 calibrate "${session}" -o fitted.txt)
expect_in("${out}" "verdict: good")
run(0 measure "${session}" --params fitted.txt --pole-length 2 -o tips.csv)
expect_in("${out}" "30 to 45")
run(0 screen "${session}" --set vertical -o selected.csv)
expect_in("${out}" "coverage")
foreach(name "${session}" true.txt fitted.txt tips.csv selected.csv)
  if(NOT EXISTS "${FOLDER}/${name}")
    message(SEND_ERROR "${name} was not written")
  endif()
endforeach()

# Through a pipe: the same bytes, without carriage returns put in on the way.
execute_process(
  COMMAND ${PROGRAM} simulate --seed 3 --points 50
  COMMAND ${PROGRAM} measure - --params fitted.txt --pole-length 2
  WORKING_DIRECTORY "${FOLDER}"
  RESULTS_VARIABLE statuses
  OUTPUT_FILE piped.csv
  ERROR_VARIABLE err)
if(NOT statuses STREQUAL "0;0")
  message(SEND_ERROR "piped: exit statuses ${statuses}\n${err}")
endif()
file(SHA256 "${FOLDER}/tips.csv" written)
file(SHA256 "${FOLDER}/piped.csv" piped)
if(NOT written STREQUAL piped)
  message(SEND_ERROR "a pipe and a file get different bytes")
endif()

# Data that cannot be used, and input that cannot be read.
file(WRITE "${FOLDER}/turn.csv"
     "set,time,incline_x,incline_y,mag_x_a,mag_y_a,mag_z_a,mag_x_b,mag_y_b,mag_z_b\n"
     "horizontal,08:00:00,0,0,1,2,3,4,5,6\n")
run(1 measure turn.csv --pole-length 2 -o none.csv)
expect_in("${err}" "no row belongs to the set 'measure'")
run(1 calibrate turn.csv -o none.csv)
expect_in("${err}" "The points less than 5, could not fit!")
run(2 measure missing.csv --pole-length 2 -o none.csv)
expect_in("${err}" "missing.csv: there is no such file")
file(APPEND "${FOLDER}/turn.csv" "horizontal,25:00:00,0,0,1,2,3,4,5,6\n")
run(2 measure turn.csv --set horizontal --pole-length 2 -o none.csv)
expect_in("${err}" "turn.csv:3: column time: '25:00:00' is no time of day")
expect_no_file(none.csv)
if(EXISTS /dev/full)
  execute_process(
    COMMAND ${PROGRAM} simulate
    OUTPUT_FILE /dev/full
    RESULT_VARIABLE status
    ERROR_VARIABLE err)
  if(NOT status STREQUAL "2")
    message(SEND_ERROR "a full disk: exit status ${status}, expected 2")
  endif()
  expect_in("${err}" "standard output: cannot be written to its end")
endif()

file(GLOB left_behind "${FOLDER}/.*.part")
if(left_behind)
  message(SEND_ERROR "left behind: ${left_behind}")
endif()
