# What the plug-in is built against: the stand-in, or the libraries of a package KOVAPlatform.
set(KOVA_PLATFORM "" CACHE PATH "Where a package KOVAPlatform stands to build against")
set(platform_libraries
  framework_base framework_core framework_pmi framework_orvo
  orvo_kernel pmi_entities pmi_importer os_loader)

if(NOT KOVA_PLATFORM)
  add_subdirectory(platform)
  return()
endif()

unset(KOVAPlatform_DIR CACHE)
find_package(KOVAPlatform CONFIG REQUIRED PATHS "${KOVA_PLATFORM}" NO_DEFAULT_PATH)
foreach(library ${platform_libraries} os_loader_shim)
  if(NOT TARGET ${library})
    list(APPEND missing ${library})
  endif()
endforeach()
if(missing)
  list(JOIN missing ", " missing)
  message(FATAL_ERROR "No target ${missing} in the package ${KOVAPlatform_CONFIG}")
endif()
