// What the program around the drawing database provides it with.
#pragma once

#include "acadstrc.h"
#include "adesk.h"

class AcDbDatabase;

class QRS_HOST_PORT AcDbHostApplicationServices {
  public:
    enum FindFileHint {
        kDefault = 0,
        kFontFile,
        kCompiledShapeFile,
        kTrueTypeFontFile,
        kEmbeddedImageFile,
        kXRefDrawing
    };

    virtual ~AcDbHostApplicationServices();

    // The drawing that functions without a database argument speak of; null when none is open.
    AcDbDatabase* workingDatabase() const { return workingDatabase_; }
    // The caller answers for the database's life; a database that is destroyed stops being the working one.
    void setWorkingDatabase(AcDbDatabase* database) { workingDatabase_ = database; }

    // Full path of a file that is searched for where the program looks for its files. eFileNotFound when there is none
    // (always, where no program answers); eInvalidInput when the buffer (length in characters) is too small.
    virtual Acad::ErrorStatus findFile(ACHAR* pathOut, int length, const ACHAR* name, AcDbDatabase* database = nullptr,
                                       FindFileHint hint = kDefault);

  private:
    AcDbDatabase* workingDatabase_ = nullptr;
};

// Never null.
QRS_HOST_PORT AcDbHostApplicationServices* acdbHostApplicationServices();
// Puts the program's own services in place (the caller keeps them alive); null puts the plain ones back. The working
// database passes over to the new services.
QRS_HOST_PORT Acad::ErrorStatus acdbSetHostApplicationServices(AcDbHostApplicationServices* services);
