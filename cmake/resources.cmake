# The program's own resources, one script for both systems. For Windows the compiled script is
# linked into each program. For Linux it is linked into a resource-only PE image which is embedded
# whole, so that the reader for modules serves it too.

if(WIN32)
    set(WINDRES ${CMAKE_RC_COMPILER})
    set(PE_LINKER ${CMAKE_LINKER})
else()
    find_program(I686_WINDRES i686-w64-mingw32-windres REQUIRED)
    find_program(I686_LD i686-w64-mingw32-ld REQUIRED)
    set(WINDRES ${I686_WINDRES})
    set(PE_LINKER ${I686_LD})
endif()

# compile_script(SCRIPT OUT INPUT...): the object that the script, a full path, is compiled into.
# The inputs, and all of resources/, are what it includes.
function(compile_script script out)
    file(GLOB inputs CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/resources/*)
    add_custom_command(OUTPUT ${out}
        COMMAND ${WINDRES} -c 1252 -I ${CMAKE_SOURCE_DIR} ${script} -O coff -o ${out}
        DEPENDS ${script} ${inputs} ${ARGN}
        VERBATIM)
endfunction()

# compile_module_resources(FILE DESCRIPTION OUT SCRIPT...): the object with the resources of one
# module: its version information and what the scripts hold.
function(compile_module_resources file description out)
    set(included "")
    set(inputs)
    foreach(script IN LISTS ARGN)
        string(APPEND included "#include \"${script}\"\n")
        get_filename_component(folder ${CMAKE_SOURCE_DIR}/${script} DIRECTORY)
        file(GLOB beside CONFIGURE_DEPENDS ${folder}/*)
        list(APPEND inputs ${beside})
    endforeach()
    get_filename_component(name ${file} NAME_WE)
    # What has a window or a command line is an application, the others are libraries.
    if(name MATCHES "^quillmoor")
        set(type 1)
    else()
        set(type 2)
    endif()
    set(script ${CMAKE_BINARY_DIR}/scripts/${name}.rc)
    configure_file(${CMAKE_SOURCE_DIR}/cmake/module.rc.in ${script} @ONLY)
    compile_script(${script} ${out} ${inputs})
endfunction()

# embed_resources(TARGET SCRIPT): on Linux makes the script's resources those of every program that
# links TARGET.
function(embed_resources target script)
    if(WIN32)
        return()
    endif()
    get_filename_component(name ${script} NAME_WE)
    set(object ${CMAKE_BINARY_DIR}/${name}_resources.obj)
    compile_script(${CMAKE_SOURCE_DIR}/${script} ${object})
    set(image ${CMAKE_BINARY_DIR}/${name}_resources.dll)
    add_custom_command(OUTPUT ${image}
        COMMAND ${PE_LINKER} --dll --entry 0 -s --no-insert-timestamp -o ${image} ${object}
        DEPENDS ${object} VERBATIM)
    set(assembly ${CMAKE_BINARY_DIR}/${name}_resources.cpp)
    file(CONFIGURE OUTPUT ${assembly} CONTENT [[
/* The program's resources, a PE image, from the first symbol to the second. */
__asm__(".section .rodata\n"
        ".balign 16\n"
        ".global QuillmoorResources\n"
        ".global QuillmoorResourcesEnd\n"
        "QuillmoorResources:\n"
        ".incbin \"@image@\"\n"
        "QuillmoorResourcesEnd:\n"
        ".byte 0\n"
        ".previous\n");
]] @ONLY)
    set_source_files_properties(${assembly} PROPERTIES OBJECT_DEPENDS ${image})
    target_sources(${target} PRIVATE ${assembly})
endfunction()

# add_module_resources(TARGET FILE DESCRIPTION SCRIPT...): links the module's resources in on
# Windows.
function(add_module_resources target file description)
    if(WIN32)
        set(object ${CMAKE_BINARY_DIR}/scripts/${target}.obj)
        compile_module_resources(${file} ${description} ${object} ${ARGN})
        set_source_files_properties(${object} PROPERTIES EXTERNAL_OBJECT ON GENERATED ON)
        target_sources(${target} PRIVATE ${object})
    endif()
endfunction()
