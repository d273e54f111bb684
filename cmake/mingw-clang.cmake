# The same target through clang: for its warnings, clang-tidy and its finer sanitizers. Headers, run-time
# and linker stay those of the GCC cross compiler.
include(${CMAKE_CURRENT_LIST_DIR}/mingw-gcc.cmake)
# Of whichever version of GCC is there.
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-libgcc-file-name
  OUTPUT_VARIABLE TALVENOR_GCC_LIBRARIES OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
cmake_path(GET TALVENOR_GCC_LIBRARIES PARENT_PATH TALVENOR_GCC_LIBRARIES)
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET ${TALVENOR_TRIPLET})
set(CMAKE_CXX_COMPILER_TARGET ${TALVENOR_TRIPLET})
set(CMAKE_CXX_FLAGS_INIT "-isystem ${TALVENOR_GCC_LIBRARIES}/include/c++ -isystem ${TALVENOR_GCC_LIBRARIES}/include/c++/${TALVENOR_TRIPLET} -isystem ${TALVENOR_GCC_LIBRARIES}/include/c++/backward")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -B${TALVENOR_GCC_LIBRARIES} -L${TALVENOR_GCC_LIBRARIES}")
set(CMAKE_CXX_STANDARD_LIBRARIES "-Wl,--start-group -lstdc++ -lgcc -lgcc_eh -lpthread -Wl,--end-group -lkernel32 -luser32")
