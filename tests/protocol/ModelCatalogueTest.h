#pragma once

#include <QObject>

class ModelCatalogueTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyModel_data();
    void everyModel();
    void otherReplies_data();
    void otherReplies();
    void unwrittenFactsStay();
    void countThatDoesNotFit();
};
