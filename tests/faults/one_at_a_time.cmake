# Read by ctest after the test cases were discovered.
if(tests_faults_controls_TESTS)
  set_tests_properties(${tests_faults_controls_TESTS} PROPERTIES RESOURCE_LOCK faults_view_files)
endif()
if(tests_faults_view_files_TESTS)
  set_tests_properties(${tests_faults_view_files_TESTS} PROPERTIES RESOURCE_LOCK
                                                                   faults_kept_view_file)
endif()
