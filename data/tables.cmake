# The tables of the system folder, made by source/make_tables.py.
list(APPEND system_files DataStore.dbf linetype.dbf pipe.dbf qrsdata.dbf userlayer.dbf)
