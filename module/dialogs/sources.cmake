set(QRS_DIALOGS_SOURCES
    exportsetting.cpp
    importsetting.cpp
    layerdefdlg.cpp
    pipesettingdlg.cpp
    pipesystemdlg.cpp
    settingfiles.cpp
    settingoptions.cpp)
