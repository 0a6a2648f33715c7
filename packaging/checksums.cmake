# Writes SHA256SUMS for the files of `folder`. All files get the same mode, whoever makes the
# archive.
file(GLOB_RECURSE files LIST_DIRECTORIES false RELATIVE "${folder}" "${folder}/*")
list(SORT files)
list(REMOVE_ITEM files SHA256SUMS)
set(sums "")
foreach(file IN LISTS files)
  file(SHA256 "${folder}/${file}" sum)
  string(APPEND sums "${sum}  ${file}\n")
endforeach()
file(WRITE "${folder}/SHA256SUMS" "${sums}")
file(CHMOD_RECURSE "${folder}"
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
  DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
    GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
