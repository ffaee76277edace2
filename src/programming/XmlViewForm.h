#pragma once

#include <QDialog>
#include <QString>
#include <cstdint>

// "Dati Programmazione": the printer's whole programming in grids.
class XmlViewForm : public QDialog
{
    Q_OBJECT
public:
    // Set by the opener before the form is created: 2 shows the file
    // XmlFile; any other value reads the printer.
    static int16_t FormMode;
    static QString XmlFile;

    explicit XmlViewForm(QWidget *parent = nullptr);
};
