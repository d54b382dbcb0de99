# The sources of the random operations of each room, for its random test and its fuzz target.
set(kelcl_random_operations_string
    random_edits.cpp random_operations.cpp random_radix.cpp random_searches.cpp random_words.cpp)
set(kelcl_random_operations_buffers
    model_edits.cpp model_searches.cpp model_text.cpp
    random_edits.cpp random_inputs.cpp random_operations.cpp random_searches.cpp random_trial.cpp)
set(kelcl_random_operations_hosts random_operations.cpp)
foreach(room IN ITEMS string buffers hosts)
    list(TRANSFORM kelcl_random_operations_${room} PREPEND ${CMAKE_CURRENT_LIST_DIR}/${room}/)
endforeach()
