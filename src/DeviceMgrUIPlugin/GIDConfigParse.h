// The SIM group rules of GIDConfig.xml: named groups of bit tests on single bytes of GID1 and GID2.
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

class QXmlStreamReader;

// One bit test on one byte of a GID.
struct GIDItem
{
    quint32 byte = 0;  // 1-based position of the byte within the GID
    QString method;    // only "and" is defined
    qint32 result = 0; // expected outcome: non-zero when the mask bits must be set
    quint32 value = 0; // bit mask
};

struct GIDGroup
{
    QString name;
    QList<GIDItem> gid1Items;
    QList<GIDItem> gid2Items;
};

// Reads GIDConfig.xml from the plugin folder once, when the instance is created. Created lazily on
// the GUI thread, without locking, like the plugin's other singletons.
class GIDConfigParse
{
public:
    static GIDConfigParse* GetInstance();
    static void DestroyConfigInstance();

    // Replaces the group list with the groups of `fileName`. A file that cannot be opened, or that
    // is not well-formed, leaves the list empty; false then.
    bool LoadFile(QString fileName);
    // The groups in file order (a copy).
    QList<GIDGroup> GetGIDGroups() const;

private:
    GIDConfigParse();
    ~GIDConfigParse() = default;
    Q_DISABLE_COPY(GIDConfigParse)

    bool readFile(QXmlStreamReader& reader);
    bool readGIDInfo(QXmlStreamReader& reader);

    static GIDConfigParse* m_pConfigInstance;
    QList<GIDGroup> m_listGroups;
};
