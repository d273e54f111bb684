# Run after every link of Talvenor.exe: what the program loads, what it lets the system protect, and its size must
# stay what they are. A build that changes one of them fails.
#
#   cmake -DPROGRAM=Talvenor.exe -DOBJDUMP=objdump -DICONS="a.ico;b.ico" -DMAP=Talvenor.map
#     -DSIZE=refuse|report|ignore -P check_exe.cmake
#
# SIZE says what becomes of a program that is too large: an error, a warning, nothing. MAP is the linker's account of
# what it took, from which the check derives the reason.
cmake_minimum_required(VERSION 3.25)

# On every Windows from 7 on, and none of them is looked for in the program's own folder: all but comctl32 are
# among the libraries that the system maps from its own folder by name, and comctl32 comes by the manifest.
set(allowed_libraries
  advapi32.dll comctl32.dll kernel32.dll msvcrt.dll ole32.dll shell32.dll shlwapi.dll user32.dll)
# High-entropy addresses, may be moved, data does not run, aware of terminal servers.
set(wanted_flags 00008160)
set(wanted_subsystem 00000002)  # with windows
math(EXPR size_limit "64 * 1024")
math(EXPR size_limit_with_icons "220 * 1024")

function(refuse)
  list(JOIN ARGN "" text)
  message(FATAL_ERROR "${PROGRAM}: ${text}")
endfunction()

function(dump option result)
  execute_process(COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C ${OBJDUMP} ${option} ${PROGRAM}
    OUTPUT_VARIABLE text RESULT_VARIABLE failed)
  if(failed)
    refuse("${OBJDUMP} cannot read it")
  endif()
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

function(check_field headers name wanted)
  if(NOT headers MATCHES "\n${name}[ \t]+([0-9a-f]+)")
    refuse("has no header field ${name}")
  elseif(NOT CMAKE_MATCH_1 STREQUAL wanted)
    refuse("${name} is ${CMAKE_MATCH_1} and not ${wanted}")
  endif()
endfunction()

function(check_libraries headers)
  string(REGEX MATCHALL "DLL Name: [^\n\r]+" lines "${headers}")
  list(TRANSFORM lines REPLACE "DLL Name: " "")
  list(TRANSFORM lines TOLOWER)
  list(SORT lines)
  if(NOT lines STREQUAL allowed_libraries)
    refuse("loads ${lines}\ninstead of ${allowed_libraries}")
  endif()
  if(NOT headers MATCHES "\nEntry d 0+ 0+ Delay Import Directory")
    refuse("has libraries that load later")
  endif()
endfunction()

function(check_sections sections)
  # Of each section: its line, then the line of its flags.
  string(REGEX MATCHALL "\n +[0-9]+ [^ ]+ [^\n]*\n +[A-Z, ]+" pairs "${sections}")
  list(LENGTH pairs count)
  if(count LESS 5)
    refuse("only ${count} sections were found")
  endif()
  foreach(pair IN LISTS pairs)
    if(pair MATCHES "CODE" AND NOT pair MATCHES "READONLY")
      refuse("a section can be both written and run:${pair}")
    endif()
  endforeach()
endfunction()

# What our own object files took from the C++ library. Since that is compiled with exceptions, a single function of it
# can bring all of their machinery, four times the program's code.
function(explain_size result)
  if(NOT EXISTS "${MAP}")
    set(${result} "there is no ${MAP} to derive the reason from" PARENT_SCOPE)
    return()
  endif()
  file(READ ${MAP} map LIMIT 200000)  # what was taken comes first
  string(REGEX REPLACE "[][;]" "?" map "${map}")  # a list of CMake ends or joins at these
  # Which object file, and, in the next line, for whom and in parentheses for what.
  string(REGEX MATCHALL "libstdc\\+\\+\\.a\\([^\n\r]*[\n\r]+ +[^\n\r]*\\)[\n\r]" takings "${map}")
  list(FILTER takings EXCLUDE REGEX "[\n\r] +[^\n\r]*libstdc\\+\\+\\.a\\(")
  list(TRANSFORM takings STRIP)
  list(TRANSFORM takings REPLACE "[\n\r]+ +" " for ")
  list(JOIN takings "\n  " takings)
  set(${result} "Of the C++ library our files take:\n  ${takings}\nIf one of these is a member of std::wstring or a \
function that throws, define it in base/fatal_handlers.cpp like the others." PARENT_SCOPE)
endfunction()

function(check_size)
  file(SIZE ${PROGRAM} size)
  set(icons_size 0)
  foreach(icon IN LISTS ICONS)
    file(SIZE ${icon} icon_size)
    math(EXPR icons_size "${icons_size} + ${icon_size}")
  endforeach()
  math(EXPR size_without_icons "${size} - ${icons_size}")
  if(size GREATER size_limit_with_icons)
    set(finding "has ${size} bytes, more than ${size_limit_with_icons}")
  elseif(size_without_icons GREATER size_limit)
    set(finding "has ${size_without_icons} bytes without its icons, more than ${size_limit}")
  else()
    return()
  endif()
  explain_size(explanation)
  if(SIZE STREQUAL report)
    message(WARNING "${PROGRAM}: ${finding}: this compiler is not one that we know. The program itself is complete.\n${explanation}")
  else()
    refuse("${finding}\n${explanation}")
  endif()
endfunction()

dump(-p headers)
dump(-h sections)
check_field("${headers}" Subsystem ${wanted_subsystem})
check_field("${headers}" DllCharacteristics ${wanted_flags})
check_libraries("${headers}")
check_sections("${sections}")
if(NOT SIZE STREQUAL ignore)
  check_size()
endif()
