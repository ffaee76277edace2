// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Currency.h"

#include <QString>
#include <cstdint>
#include <memory>

namespace pugi {
class xml_attribute;
class xml_document;
class xml_node;
}

// A small XML file of keys: the connection settings beside the program and
// the per-printer programming files.
//
// The getters look below the root element only; the setters look at the
// root element too, so SetValueAtt("settings", ...) writes on the root of a
// file whose root is "settings", and GetValueAtt("settings", ...) does not
// find it again. GetValue answers false on a document that was not loaded
// from disk, even for a key set a moment ago.
//
// The file is one line: no declaration, no indentation, elements and
// attributes in the order they were first written, UTF-8.
class XmlSettings
{
public:
    bool Loaded = false;  // OpenSettings found and parsed the file
    bool Created = false; // OpenSettings began a new document instead

    XmlSettings();
    ~XmlSettings();
    XmlSettings(const XmlSettings &) = delete;
    XmlSettings &operator=(const XmlSettings &) = delete;

    // Reads folder/fileName.xml (the program's folder when folder is empty);
    // fileName comes without extension. A missing or broken file gives a new
    // document whose root is rootName, or "settings" when that is empty.
    void OpenSettings(const QString &fileName, const QString &folder, const QString &rootName);

    // Saves to path, or to the opened file when path is empty, and releases
    // the document. Closing always writes: a reader that must not write drops
    // the object without closing it.
    void CloseSettings(const QString &path = QString());

    // Saves to the opened file and keeps the document.
    void Update();

    // Text of the first element named tag below the root, at any depth.
    // False, and value untouched, when there is none or nothing was loaded.
    bool GetValue(const QString &tag, QString &value) const;
    // An attribute of that same first element.
    bool GetValueAtt(const QString &tag, const QString &attribute, QString &value) const;

    // Sets the text of the first element named tag, root included; a missing
    // one is appended to the root. Numbers are stored as their text.
    void SetValue(const QString &tag, const QString &value);
    void SetValue(const QString &tag, const char *value) { SetValue(tag, QString::fromUtf8(value)); }
    void SetValue(const QString &tag, int value);
    void SetValue(const QString &tag, int64_t value);
    void SetValue(const QString &tag, double value);
    void SetValue(const QString &tag, float value);
    void SetValue(const QString &tag, Currency value);
    void SetValue(const QString &tag, bool value) = delete; // say -1 or 0, or a text

    // Sets an attribute of that same element; a new one goes after the others.
    void SetValueAtt(const QString &tag, const QString &attribute, const QString &value);
    void SetValueAtt(const QString &tag, const QString &attribute, const char *value)
    {
        SetValueAtt(tag, attribute, QString::fromUtf8(value));
    }
    void SetValueAtt(const QString &tag, const QString &attribute, int value);
    void SetValueAtt(const QString &tag, const QString &attribute, int64_t value);
    void SetValueAtt(const QString &tag, const QString &attribute, double value);
    void SetValueAtt(const QString &tag, const QString &attribute, float value);
    void SetValueAtt(const QString &tag, const QString &attribute, Currency value);
    void SetValueAtt(const QString &tag, const QString &attribute, bool value) = delete;

    // The full path of the file that OpenSettings named.
    QString filePath() const { return m_filePath; }

private:
    pugi::xml_document &document() const;
    pugi::xml_node firstBelowRoot(const QString &tag) const;
    pugi::xml_node findOrCreate(const QString &tag);
    pugi::xml_attribute findAttribute(const pugi::xml_node &node, const QByteArray &name) const;
    void save(const QString &path) const;

    QString m_filePath;
    std::unique_ptr<pugi::xml_document> m_doc;
    struct AttributeIndex;
    std::unique_ptr<AttributeIndex> m_index; // of the large element last used
};
