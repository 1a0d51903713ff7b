# Makes C++ of the files of the page, for assets.h: cmake -D OUTPUT=FILE "-DFILES=FILE;..." -P embed.cmake
# The scripts are one text, in the order in which they are named.
foreach(file IN LISTS FILES)
  get_filename_component(ending "${file}" LAST_EXT)
  file(READ "${file}" text)
  string(APPEND "PAGE${ending}" "${text}")
endforeach()
set(code "#include \"page/assets.h\"\n\nnamespace inspect::page {\n")
foreach(ending html css js)
  string(TOUPPER "PAGE_${ending}" name)
  string(APPEND code "\nconst std::string_view ${name} = R\"~~~~(${PAGE.${ending}})~~~~\";\n")
endforeach()
file(WRITE "${OUTPUT}" "${code}\n} // namespace inspect::page\n")
