# Fails when a source of the product includes what its room may not use. Each room uses those below it; docs/architecture.md
# says what is in each. Rules include no <windows.h>, neither themselves nor by what they include.
#
#   cmake -DROOT=... -DRULES=source;source... -P cmake/check_rooms.cmake

cmake_minimum_required(VERSION 3.25)

# The first folder that a file is in or below, and what it may include.
set(rooms ui/about ui/shutdown ui engine log framework base)
set(ui/about_uses ui/about framework base res)
set(ui/shutdown_uses ui/shutdown framework base res)
set(ui_uses ui/about ui/shutdown ui engine log framework base res)
set(engine_uses engine log base)
set(log_uses log base res)
set(framework_uses framework base)
set(base_uses base)

function(room_of file result)
  foreach(room IN LISTS rooms)
    string(FIND "${file}" "${room}/" at)
    if(at EQUAL 0)
      set(${result} ${room} PARENT_SCOPE)
      return()
    endif()
  endforeach()
  get_filename_component(folder "${file}" DIRECTORY)
  set(${result} "${folder}" PARENT_SCOPE)
endfunction()

# What `file` includes: ours as "room/name", the system's as <name>.
function(includes_of file result)
  file(STRINGS "${ROOT}/${file}" lines REGEX "^#[ \t]*include")
  list(TRANSFORM lines REPLACE "^#[ \t]*include[ \t]*([\"<][^\">]*[\">]).*" "\\1")
  set(${result} ${lines} PARENT_SCOPE)
endfunction()

set(found)
file(GLOB_RECURSE sources RELATIVE ${ROOT}
  ${ROOT}/base/*.h ${ROOT}/base/*.cpp ${ROOT}/framework/*.h ${ROOT}/framework/*.cpp ${ROOT}/engine/*.h
  ${ROOT}/engine/*.cpp ${ROOT}/log/*.h ${ROOT}/log/*.cpp ${ROOT}/ui/*.h ${ROOT}/ui/*.cpp)
list(LENGTH sources count)
if(count EQUAL 0)
  message(FATAL_ERROR "no sources below ${ROOT}")
endif()
foreach(file IN LISTS sources)
  room_of(${file} room)
  includes_of(${file} includes)
  foreach(include IN LISTS includes)
    if(NOT include MATCHES "^\"(.*)\"$")
      continue()
    endif()
    room_of(${CMAKE_MATCH_1} used)
    if(NOT used IN_LIST ${room}_uses)
      list(JOIN ${room}_uses " " uses)
      list(APPEND found "${file} includes ${include}, but ${room} may use only: ${uses}")
    endif()
  endforeach()
endforeach()

# Rules, with the headers that they include in turn.
foreach(rule IN LISTS RULES)
  set(open ${rule})
  set(seen)
  while(open)
    list(POP_FRONT open file)
    list(APPEND seen ${file})
    includes_of(${file} includes)
    foreach(include IN LISTS includes)
      if(include MATCHES "^\"(.*)\"$")
        if(NOT CMAKE_MATCH_1 IN_LIST seen)
          list(APPEND open ${CMAKE_MATCH_1})
        endif()
      elseif(include MATCHES "\\.h>$")
        list(APPEND found "${rule} is a rule, and ${file} includes ${include}")
      endif()
    endforeach()
  endwhile()
endforeach()

if(found)
  list(JOIN found "\n  " text)
  message(FATAL_ERROR "What a room may include is in cmake/check_rooms.cmake:\n  ${text}")
endif()
