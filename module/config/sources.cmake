# Sources of the table library, names below config/
set(QRS_CONFIG_SOURCES
    dbfexception.cpp
    dbfmemo.cpp
    dbfrecordset.cpp
    dbftable.cpp
    dbfvalue.cpp)
