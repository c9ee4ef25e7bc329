# Installs the build into an empty folder, builds the program outside against it, and runs what was installed and built.
file(REMOVE_RECURSE ${SCRATCH})
set(prefix ${SCRATCH}/installed)
set(program ${SCRATCH}/program)

function(run)
    execute_process(COMMAND ${ARGV} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        list(JOIN ARGV " " command)
        message(FATAL_ERROR "${command}\n${output}\nfailed: ${result}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect what expected)
    if(NOT output STREQUAL expected)
        message(FATAL_ERROR "${what} printed\n${output}\ninstead of\n${expected}")
    endif()
endfunction()

if(SANITIZE)
    set(sanitize -DCMAKE_CXX_FLAGS=-fsanitize=${SANITIZE})
endif()

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})
run(${CMAKE_COMMAND} -G Ninja -S ${SOURCE}/program -B ${program}
    -D CMAKE_PREFIX_PATH=${prefix}
    -D KORVAN_HEADERS=${prefix}/${INCLUDEDIR}/KorvanPluginManager
    -D WITH_WIDGETS=${WIDGETS}
    -D CMAKE_CXX_COMPILER=${COMPILER}
    -D CMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}
    ${sanitize})
run(${CMAKE_COMMAND} --build ${program})

run(${program}/host ${SOURCE}/plugins)
expect(host "Skript ohne Titel\ncom.example.host Host Check\ngreet: hello, host\n")
if(WIDGETS)
    # Qt warns about what a machine without a user logged in does not have.
    run(${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES=*.warning=false
        ${program}/widgets-host ${SOURCE}/plugins)
    expect(widgets-host "com.example.host/greet\n")
endif()

# The program of the guide for hosts, as the guide prints it, with somebody who uses it.
function(write_block language path)
    file(READ ${SOURCE}/../../docs/embedding.md guide)
    set(opening "```${language}\n")
    string(FIND "${guide}" "${opening}" begin)
    string(LENGTH "${opening}" length)
    math(EXPR begin "${begin} + ${length}")
    string(SUBSTRING "${guide}" ${begin} -1 rest)
    string(FIND "${rest}" "```" end)
    string(SUBSTRING "${rest}" 0 ${end} block)
    file(WRITE ${path} "${block}")
endfunction()

if(WIDGETS)
    set(guide ${SCRATCH}/guide)
    write_block(cmake ${guide}/CMakeLists.txt)
    write_block(cpp ${guide}/main.cpp)
    file(APPEND ${guide}/CMakeLists.txt "target_sources(editor PRIVATE ${SOURCE}/guide/user.cpp)\n")
    file(READ ${guide}/main.cpp text)
    string(REGEX MATCHALL "\n" lines "${text}")
    list(LENGTH lines count)
    if(count GREATER 55) # and five for CMake
        message(FATAL_ERROR "The guide's program has ${count} lines.")
    endif()
    run(${CMAKE_COMMAND} -G Ninja -S ${guide} -B ${guide}/build
        -D CMAKE_PREFIX_PATH=${prefix}
        -D CMAKE_CXX_COMPILER=${COMPILER}
        -D CMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}
        ${sanitize})
    run(${CMAKE_COMMAND} --build ${guide}/build)
    file(COPY ${SOURCE}/plugins/ DESTINATION ${guide}/data/editor/Plugins)
    run(${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES=*.warning=false
        XDG_DATA_HOME=${guide}/data XDG_CONFIG_HOME=${guide}/data
        ${guide}/build/editor)
    expect(editor "Manage Plug-ins…, Console, -, Host Check\nPlug-ins: Host Check\nConsole: hello, nobody\n")
endif()

# Also where the program runs from a folder that the build never knew.
file(RENAME ${prefix} ${SCRATCH}/moved)
run(${SCRATCH}/moved/bin/korvan-plugins run com.example.host/greet --folder ${SOURCE}/plugins)
expect(korvan-plugins "hello, nobody\n")
run(${SCRATCH}/moved/bin/korvan-plugins demo)

# And it finds there what authors need: the schema and the typings for their editors, and the templates.
if(NOT EXISTS ${SCRATCH}/moved/${DATADIR}/korvan/schemas/manifest.schema.json)
    message(FATAL_ERROR "The schema of manifests is not installed.")
endif()
foreach(template command long-running data-supplier)
    run(${SCRATCH}/moved/bin/korvan-plugins create "Made of ${template}" --template ${template} --folder ${SCRATCH}/made)
    run(${SCRATCH}/moved/bin/korvan-plugins validate "${SCRATCH}/made/Made of ${template}.korvanplugin")
    if(NOT EXISTS "${SCRATCH}/made/Made of ${template}.korvanplugin/.typings/index.d.ts")
        message(FATAL_ERROR "A new plug-in has no typings.")
    endif()
endforeach()
