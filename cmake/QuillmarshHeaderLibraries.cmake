# Header-only libraries have no packages for Windows, so the headers of the building system are used.

# quillmarsh_link_headers(VARIABLE HEADER): sets VARIABLE to a folder with a link to the folder of HEADER, such as `hwy`
# of `hwy/highway.h`. The other headers of that system stay out.
function(quillmarsh_link_headers variable header)
  cmake_path(GET header PARENT_PATH folder)
  find_path(quillmarsh_${folder}_directory ${header} PATHS /usr/include
    NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  set(links "${PROJECT_BINARY_DIR}/headers/${folder}")
  file(MAKE_DIRECTORY "${links}")
  file(CREATE_LINK "${quillmarsh_${folder}_directory}/${folder}" "${links}/${folder}" SYMBOLIC)
  set(${variable} "${links}" PARENT_SCOPE)
endfunction()
