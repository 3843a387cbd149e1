# qkui_add_resources(<target> <file.rc> [DEPENDS file...] [INCLUDE dir...])
#
# Compiles a resource script and embeds the result into the target, which links QKUILib: the resources become a
# module when the target is loaded and cease to be one when it is unloaded. A target has one script, which may
# #include others. The script is UTF-8. It goes through the C++ compiler's preprocessor with RC_INVOKED defined
# and finds what the target's own sources find, <platform/resource_styles.h> among it; INCLUDE adds folders for
# headers and for the files that the script names, which else lie relative to the script. Included headers and
# named files are dependencies by themselves; DEPENDS adds others.
#
# Scripts in the customary form compile as they are: with <afxres.h>, <winres.h> or <windows.h>, in UTF-16 or the
# code page that they name, with backslashes in their paths, with string tables, icons, versions, menus and
# controls. What is compiled and not drawn is named, once for each compilation.
#
#     #include <platform/resource_styles.h>
#     101 PNG "skin/close.png"
#     200 HTML "help.html"
#     300 DIALOGEX 0, 0, 200, 120
#     STYLE WS_POPUP | DS_SETFONT
#     CAPTION "..."
#     FONT 9, "Noto Sans CJK SC"
#     BEGIN
#         CONTROL "", 1001, "STATIC", WS_CHILD | WS_VISIBLE, 10, 10, 80, 12
#     END

include_guard()
set(QKUI_RESOURCE_SCRIPT "${CMAKE_CURRENT_LIST_DIR}/QKUIResourceScript.cmake" CACHE INTERNAL "")
cmake_policy(SET CMP0116 NEW) # depfiles are translated by CMake, whatever the including project chose

# The source that names where the bytes begin and how many they are, and registers them. It takes the bytes
# in by the assembler, so that no copy of them in source form has to be made and compiled.
function(qkui_resources_source rc_name symbol res result)
    string(CONFIGURE [=[
// Made by qkui_add_resources from @rc_name@.
#include <cstdint>

#include <platform/resources.h>

asm(".pushsection .rodata\n"
    ".balign 8\n"
    ".globl @symbol@_bytes\n"
    ".hidden @symbol@_bytes\n"
    "@symbol@_bytes:\n"
    ".incbin \"@res@\"\n"
    "@symbol@_end:\n"
    ".balign 8\n"
    ".globl @symbol@_size\n"
    ".hidden @symbol@_size\n"
    "@symbol@_size:\n"
    ".8byte @symbol@_end - @symbol@_bytes\n"
    ".popsection\n");

extern "C" {
[[gnu::visibility("hidden")]] extern const unsigned char @symbol@_bytes[];
[[gnu::visibility("hidden")]] extern const std::uint64_t @symbol@_size;
}

namespace {

struct Registrar {
    Registrar() : module(RegisterModuleResources(@symbol@_bytes, @symbol@_size)) {}
    ~Registrar() { UnregisterModuleResources(module); }
    Registrar(const Registrar&) = delete;
    Registrar& operator=(const Registrar&) = delete;
    HMODULE module;
};

const Registrar registrar;

}  // namespace
]=] source @ONLY)
    set(${result} "${source}" PARENT_SCOPE)
endfunction()

function(qkui_check_resources_target target)
    if(NOT TARGET ${target})
        message(FATAL_ERROR "qkui_add_resources: there is no target ${target}")
    endif()
    get_target_property(type ${target} TYPE)
    if(NOT type MATCHES "^(EXECUTABLE|SHARED_LIBRARY|MODULE_LIBRARY|OBJECT_LIBRARY)$")
        message(FATAL_ERROR "qkui_add_resources: ${target} must be a program, a shared library, a module or an "
                            "object library; the linker would drop the resources of a ${type}")
    endif()
    get_target_property(folder ${target} SOURCE_DIR)
    if(NOT folder STREQUAL CMAKE_CURRENT_SOURCE_DIR)
        message(FATAL_ERROR "qkui_add_resources: call it in the folder that makes ${target}, ${folder}")
    endif()
    get_target_property(others ${target} QKUI_RESOURCE_FILE)
    if(others)
        message(FATAL_ERROR "qkui_add_resources: ${target} has resources already; lookup sees one script, which may "
                            "#include others")
    endif()
    find_program(QKUI_LLVM_RC NAMES llvm-rc llvm-rc-19 llvm-rc-18 llvm-rc-17 llvm-rc-16 llvm-rc-15 llvm-rc-14
                 DOC "The resource compiler")
    if(NOT QKUI_LLVM_RC)
        message(FATAL_ERROR "qkui_add_resources: llvm-rc was not found; it is in the package llvm")
    endif()
endfunction()

function(qkui_add_resources target rc)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "DEPENDS;INCLUDE")
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "qkui_add_resources: unknown arguments ${arg_UNPARSED_ARGUMENTS}")
    endif()
    qkui_check_resources_target(${target})
    cmake_path(ABSOLUTE_PATH rc BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" NORMALIZE)
    cmake_path(GET rc PARENT_PATH rc_folder)
    cmake_path(GET rc FILENAME rc_name)
    set(folders "${rc_folder}")
    foreach(folder IN LISTS arg_INCLUDE)
        cmake_path(ABSOLUTE_PATH folder BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" NORMALIZE)
        list(APPEND folders "${folder}")
    endforeach()
    set(depends ${rc} ${QKUI_RESOURCE_SCRIPT})
    foreach(file IN LISTS arg_DEPENDS)
        cmake_path(ABSOLUTE_PATH file BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" NORMALIZE)
        list(APPEND depends "${file}")
    endforeach()

    # Two targets that are linked into one program share no symbol.
    string(MD5 hash "${target} ${rc}")
    string(SUBSTRING "${hash}" 0 12 hash)
    set(symbol "qkui_resources_${hash}")
    set(base "${CMAKE_CURRENT_BINARY_DIR}/${target}_resources/${rc_name}.${hash}")
    set(res "${base}.res")

    # Customary headers come last: a host's own go before.
    set(customary "$<$<TARGET_EXISTS:QKUILib::CustomaryHeaders>:$<TARGET_PROPERTY:QKUILib::CustomaryHeaders,INTERFACE_INCLUDE_DIRECTORIES>>")
    set(header_folders "$<TARGET_PROPERTY:${target},INCLUDE_DIRECTORIES>")
    list(JOIN folders "|" joined_folders)
    list(TRANSFORM folders PREPEND "-I" OUTPUT_VARIABLE preprocessor_folders)
    list(TRANSFORM folders REPLACE "(.+)" "/I;\\1" OUTPUT_VARIABLE compiler_folders)
    file(MAKE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/${target}_resources")
    add_custom_command(
        OUTPUT "${res}"
        COMMAND "${CMAKE_COMMAND}" -DSTEP=read "-DFROM=${rc}" "-DTO=${base}.rc" -P "${QKUI_RESOURCE_SCRIPT}"
        # -undef: names such as `linux` are no macros in a resource script. -w: an apostrophe is no mistake.
        COMMAND "${CMAKE_CXX_COMPILER}" -E -x c -undef -w -DRC_INVOKED ${preprocessor_folders}
                "$<$<BOOL:${header_folders}>:-I$<JOIN:${header_folders},;-I>>"
                "$<$<BOOL:${customary}>:-I$<JOIN:${customary},;-I>>"
                -MD -MF "${base}.d" -MQ "${res}" -o "${base}.i" "${base}.rc"
        COMMAND "${CMAKE_COMMAND}" -DSTEP=names "-DSCRIPT=${base}.i" "-DDEPFILE=${base}.d" "-DCOPY=${base}.rc"
                "-DFOLDERS=${joined_folders}" "-DTITLE=${rc_name}" -P "${QKUI_RESOURCE_SCRIPT}"
        COMMAND "${QKUI_LLVM_RC}" /no-preprocess /C 65001 /X ${compiler_folders} /FO "${res}" -- "${base}.i"
        DEPENDS ${depends}
        DEPFILE "${base}.d"
        BYPRODUCTS "${base}.i" "${base}.rc"
        WORKING_DIRECTORY "${rc_folder}"
        COMMENT "Compiling resources ${rc_name}"
        COMMAND_EXPAND_LISTS VERBATIM)

    qkui_resources_source("${rc_name}" "${symbol}" "${res}" source)
    file(CONFIGURE OUTPUT "${base}.cpp" CONTENT "${source}" @ONLY)
    # Link-time optimisation would part the symbols from the assembly that defines them.
    set_source_files_properties("${base}.cpp" PROPERTIES
        GENERATED TRUE OBJECT_DEPENDS "${res}" COMPILE_OPTIONS -fno-lto
        SKIP_UNITY_BUILD_INCLUSION TRUE SKIP_PRECOMPILE_HEADERS TRUE SKIP_AUTOGEN TRUE)
    target_sources(${target} PRIVATE "${base}.cpp")
    # For tests and tools: where the compiled file is.
    set_property(TARGET ${target} PROPERTY QKUI_RESOURCE_FILE "${res}")
endfunction()
