# Installs both shapes of the delivery and looks at what lies beside the programs.
#   cmake -DBUILD=<build folder> -P installed_files.cmake
foreach(shape "portable:." "system:lib/tessaly")
  string(REGEX REPLACE ":.*" "" component "${shape}")
  string(REGEX REPLACE ".*:" "" folder "${shape}")
  set(prefix "${BUILD}/installed_files/${component}")
  file(REMOVE_RECURSE "${prefix}")
  execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --component ${component} --prefix "${prefix}"
                  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  foreach(file "Tessaly Conversion.pdf" "Redirect.html" "README.md" "utf-8.txt")
    if(NOT EXISTS "${prefix}/${folder}/Docs/${file}")
      message(SEND_ERROR "${component}: Docs/${file} is not delivered")
    endif()
  endforeach()
  # The means of making the documents stay behind.
  foreach(file "manual" "make_character_files.py" "entities.tsv")
    if(EXISTS "${prefix}/${folder}/Docs/${file}")
      message(SEND_ERROR "${component}: Docs/${file} is delivered")
    endif()
  endforeach()
endforeach()
