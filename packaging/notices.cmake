# Puts the notices of the Debian packages beside the libraries, plugins and fonts that come from them,
# and a list of these packages with their versions.
set(folder $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX})
file(GLOB_RECURSE carried ${folder}/lib/*.so.* ${folder}/plugins/*.so ${folder}/fonts/*.ttf)
set(packages)
foreach(file ${carried})
  get_filename_component(name ${file} NAME)
  execute_process(COMMAND dpkg-query --search */${name}
                  OUTPUT_VARIABLE found COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCH "^[^:]+" package "${found}")
  list(APPEND packages ${package})
endforeach()
list(REMOVE_DUPLICATES packages)

foreach(package ${packages})
  configure_file(/usr/share/doc/${package}/copyright ${folder}/doc/notices/${package} COPYONLY)
endforeach()
file(COPY /usr/share/common-licenses DESTINATION ${folder}/doc/notices)
execute_process(COMMAND dpkg-query --show ${packages}
                OUTPUT_VARIABLE versions COMMAND_ERROR_IS_FATAL ANY)
file(WRITE ${folder}/doc/notices/README
     "The libraries, plugins and fonts beside the programs are those of these Debian packages, unchanged.
Each notice is in the file of the package's name, the licences that it points to are in common-licenses.

${versions}")
