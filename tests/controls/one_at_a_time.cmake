# Read by ctest after the test cases were discovered.
if(tests_controls_plots_TESTS)
  set_tests_properties(${tests_controls_plots_TESTS} PROPERTIES RESOURCE_LOCK view_files)
endif()
