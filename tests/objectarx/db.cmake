# Tests of the drawing database.
qrs_test(objectarx_database_test
    SOURCES db_layers_test.cpp db_linetypes_test.cpp db_objects_test.cpp db_drawing_test.cpp db_classes_test.cpp
            db_content_test.cpp db_undo_test.cpp
    LIBRARIES qrs_host)
