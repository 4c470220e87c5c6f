set(QRS_DIALOGS_SOURCES
    exportsetting.cpp
    importsetting.cpp
    settingfiles.cpp
    settingoptions.cpp)
