// SPDX-License-Identifier: GPL-3.0-or-later
#include "XmlSettings.h"

#include "Conversions.h"
#include "ProgramFolder.h"
#include "RunTimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QTemporaryFile>
#include <pugixml.hpp>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

QByteArray utf8(const QString &text)
{
    return text.toUtf8();
}

// A well-formed XML name (without the rarer characters the standard allows):
// a name the file could not read back is refused before it is written.
bool isXmlName(const QString &name)
{
    if (name.isEmpty())
        return false;
    const QChar first = name.front();
    if (!(first.isLetter() || first == QLatin1Char('_') || first == QLatin1Char(':')))
        return false;
    for (QChar c : name) {
        if (!(c.isLetterOrNumber() || c == QLatin1Char('_') || c == QLatin1Char(':') || c == QLatin1Char('-')
              || c == QLatin1Char('.')))
            return false;
    }
    return true;
}

void requireName(const QString &name)
{
    if (!isXmlName(name))
        throw RunTimeError::invalidArgument();
}

// The program spells the settings file both "Settings" (start-up) and
// "settings" (the setup screen), and means one file. Where file names are
// case-sensitive, an existing file whose name differs only in case is taken
// to be the one meant, so that both spellings reach it; when there is none,
// the name stays as given and a save creates it so.
QString resolveCase(const QString &folder, const QString &name)
{
    const QDir dir(folder);
    if (dir.exists(name))
        return name;
    const QStringList entries = dir.entryList(QDir::Files | QDir::Hidden, QDir::Name);
    for (const QString &entry : entries) {
        if (entry.compare(name, Qt::CaseInsensitive) == 0)
            return entry;
    }
    return name;
}

// The text of an element: all text below it, at any depth, in document order.
void appendText(const pugi::xml_node &node, QByteArray &text)
{
    for (pugi::xml_node child : node.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata)
            text += child.value();
        else if (child.type() == pugi::node_element)
            appendText(child, text);
    }
}

class ByteWriter : public pugi::xml_writer
{
public:
    QByteArray bytes;
    void write(const void *data, size_t size) override
    {
        bytes.append(static_cast<const char *>(data), qsizetype(size));
    }
};

} // namespace

// A table of 999 rows puts thousands of attributes on one element, and
// pugixml looks attributes up one by one: filling or reading such a table
// would grow with the square of its size. Elements of that size get an index
// by name (the first attribute of a name wins, as in a plain look-up).
struct XmlSettings::AttributeIndex
{
    static constexpr int kFrom = 64; // smaller elements are walked
    const void *node = nullptr;
    bool built = false;
    QHash<QByteArray, pugi::xml_attribute> byName;

    void forget()
    {
        node = nullptr;
        built = false;
        byName.clear();
    }
};

XmlSettings::XmlSettings()
    : m_index(std::make_unique<AttributeIndex>())
{
}

XmlSettings::~XmlSettings() = default;

void XmlSettings::OpenSettings(const QString &fileName, const QString &folder, const QString &rootName)
{
    m_index->forget();
    m_doc = std::make_unique<pugi::xml_document>();
    const QString dir = folder.isEmpty() ? ProgramFolder() : folder;
    m_filePath = dir + QLatin1Char('/') + resolveCase(dir, fileName + QStringLiteral(".xml"));

    Loaded = false;
    Created = false;
    QFile file(m_filePath);
    if (file.open(QIODevice::ReadOnly)) {
        const QByteArray content = file.readAll();
        // A value reads back as it was written: one of blanks alone is kept
        // (parse_ws_pcdata_single), and line ends are left as they are
        // (no parse_eol), so that a CR-LF in a text is still a CR-LF.
        const unsigned options = (pugi::parse_default | pugi::parse_ws_pcdata_single) & ~pugi::parse_eol;
        Loaded = bool(m_doc->load_buffer(content.constData(), size_t(content.size()), options));
    }
    if (!Loaded) {
        // No file, or one that does not parse: a fresh document, which the
        // next save writes over whatever is on disk.
        m_doc->reset();
        const QString root = rootName.isEmpty() ? QStringLiteral("settings") : rootName;
        requireName(root);
        m_doc->append_child(utf8(root).constData());
        Created = true;
    }
}

void XmlSettings::CloseSettings(const QString &path)
{
    save(path.isEmpty() ? m_filePath : path);
    m_index->forget();
    m_doc.reset();
}

void XmlSettings::Update()
{
    save(m_filePath);
}

bool XmlSettings::GetValue(const QString &tag, QString &value) const
{
    if (!Loaded)
        return false;
    const pugi::xml_node node = firstBelowRoot(tag);
    if (!node)
        return false;
    QByteArray text;
    appendText(node, text);
    value = QString::fromUtf8(text);
    return true;
}

bool XmlSettings::GetValueAtt(const QString &tag, const QString &attribute, QString &value) const
{
    if (!Loaded)
        return false;
    const pugi::xml_node node = firstBelowRoot(tag);
    if (!node)
        return false;
    const pugi::xml_attribute att = findAttribute(node, utf8(attribute));
    if (!att)
        return false;
    value = QString::fromUtf8(att.value());
    return true;
}

void XmlSettings::SetValue(const QString &tag, const QString &value)
{
    pugi::xml_node node = findOrCreate(tag);
    node.remove_children();
    if (!value.isEmpty())
        node.append_child(pugi::node_pcdata).set_value(utf8(value).constData());
}

void XmlSettings::SetValue(const QString &tag, int value) { SetValue(tag, Conv::Text(value)); }
void XmlSettings::SetValue(const QString &tag, int64_t value) { SetValue(tag, Conv::Text(value)); }
void XmlSettings::SetValue(const QString &tag, double value) { SetValue(tag, Conv::Text(value)); }
void XmlSettings::SetValue(const QString &tag, float value) { SetValue(tag, Conv::Text(value)); }
void XmlSettings::SetValue(const QString &tag, Currency value) { SetValue(tag, Conv::Text(value)); }

void XmlSettings::SetValueAtt(const QString &tag, const QString &attribute, const QString &value)
{
    requireName(attribute);
    pugi::xml_node node = findOrCreate(tag);
    const QByteArray name = utf8(attribute);
    pugi::xml_attribute att = findAttribute(node, name);
    if (!att) {
        att = node.append_attribute(name.constData());
        if (m_index->built && m_index->node == node.internal_object())
            m_index->byName.insert(name, att);
    }
    // Line breaks and other control characters are written as character
    // references (&#13;&#10;), which a reader keeps; written raw, a reader
    // would turn them into blanks.
    att.set_value(utf8(value).constData());
}

void XmlSettings::SetValueAtt(const QString &tag, const QString &attribute, int value)
{
    SetValueAtt(tag, attribute, Conv::Text(value));
}
void XmlSettings::SetValueAtt(const QString &tag, const QString &attribute, int64_t value)
{
    SetValueAtt(tag, attribute, Conv::Text(value));
}
void XmlSettings::SetValueAtt(const QString &tag, const QString &attribute, double value)
{
    SetValueAtt(tag, attribute, Conv::Text(value));
}
void XmlSettings::SetValueAtt(const QString &tag, const QString &attribute, float value)
{
    SetValueAtt(tag, attribute, Conv::Text(value));
}
void XmlSettings::SetValueAtt(const QString &tag, const QString &attribute, Currency value)
{
    SetValueAtt(tag, attribute, Conv::Text(value));
}

pugi::xml_document &XmlSettings::document() const
{
    // Only before OpenSettings or after CloseSettings: a fault of the caller.
    if (!m_doc)
        throw RunTimeError::objectNotSet();
    return *m_doc;
}

pugi::xml_node XmlSettings::firstBelowRoot(const QString &tag) const
{
    const QByteArray name = utf8(tag);
    // find_node walks the subtree in document order and leaves out the root itself.
    return document().document_element().find_node(
        [&name](const pugi::xml_node &node) { return node.type() == pugi::node_element && name == node.name(); });
}

pugi::xml_node XmlSettings::findOrCreate(const QString &tag)
{
    pugi::xml_node root = document().document_element();
    const QByteArray name = utf8(tag);
    if (name == root.name())
        return root;
    pugi::xml_node node = firstBelowRoot(tag);
    if (!node) {
        requireName(tag);
        // Blanks alone in the root are kept on loading only while they are
        // all it holds; beside an element the next load drops them, so they
        // go now, and a file saved twice is the same both times.
        const pugi::xml_node only = root.first_child();
        if (only && only == root.last_child() && only.type() == pugi::node_pcdata
            && QByteArray(only.value()).trimmed().isEmpty())
            root.remove_child(only);
        node = root.append_child(name.constData());
    }
    return node;
}

pugi::xml_attribute XmlSettings::findAttribute(const pugi::xml_node &node, const QByteArray &name) const
{
    AttributeIndex &index = *m_index;
    if (index.node != node.internal_object()) {
        index.forget();
        index.node = node.internal_object();
    }
    if (!index.built) {
        int count = 0;
        for (auto it = node.attributes_begin(); it != node.attributes_end() && count < AttributeIndex::kFrom; ++it)
            ++count;
        if (count < AttributeIndex::kFrom)
            return node.attribute(name.constData());
        for (pugi::xml_attribute att : node.attributes()) {
            const QByteArray key(att.name());
            if (!index.byName.contains(key))
                index.byName.insert(key, att);
        }
        index.built = true;
    }
    return index.byName.value(name);
}

void XmlSettings::save(const QString &path) const
{
    // One line: no declaration, no indentation, and no line end after the
    // root's closing tag, so that a file holds exactly its elements.
    ByteWriter writer;
    document().save(writer, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);

    // Written beside the target and renamed over it only when complete: a
    // failed or killed save leaves the previous file as it was. No sync to
    // disk: a programming file is saved once per flag round, hundreds of
    // times in a row, and a sync each time would cost seconds; the rename
    // over an existing file is ordered after its data by the file system.
    QString target = path;
    const QFileInfo info(path);
    if (info.isSymLink())
        target = info.symLinkTarget(); // the link stays, its file is replaced
    const QFileInfo targetInfo(target);
    QTemporaryFile file(targetInfo.absolutePath() + QStringLiteral("/.") + targetInfo.fileName()
                        + QStringLiteral(".XXXXXX"));
    const bool written = file.open() && file.write(writer.bytes) == writer.bytes.size() && file.flush();
    if (written) {
        // A new file gets the usual rights; a replaced one keeps its own.
        file.setPermissions(targetInfo.exists() ? QFile::permissions(target)
                                                : QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser
                                                      | QFile::WriteUser | QFile::ReadGroup | QFile::ReadOther);
        file.close();
        if (std::rename(QFile::encodeName(file.fileName()).constData(), QFile::encodeName(target).constData()) == 0) {
            file.setAutoRemove(false);
            return;
        }
        throw RunTimeError::pathFileAccess(QDir::toNativeSeparators(path), QString::fromLocal8Bit(std::strerror(errno)));
    }
    throw RunTimeError::pathFileAccess(QDir::toNativeSeparators(path), file.errorString());
}
