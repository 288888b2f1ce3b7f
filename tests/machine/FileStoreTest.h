#pragma once

#include <QObject>

/// The file store on the real disk.
class FileStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aDiskWithoutRoomLosesNothing_data();
    void aDiskWithoutRoomLosesNothing();
    void whatIsNoFileIsLeftAlone_data();
    void whatIsNoFileIsLeftAlone();
    void theCopyIsAsPrivateAsTheFile();
    void aLinkedFileStaysLinked();
};
