#include "fuzz/session.h"

#include <QtCore/QDir>
#include <QtCore/QEvent>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QMetaProperty>
#include <QtCore/QTemporaryDir>
#include <QtGui/QGuiApplication>

#include <new>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#include <sanitizer/lsan_interface.h>
#define TAVOLINS_LEAKS_ARE_CHECKED
#endif
#endif

namespace {

void pauseLeakCheck(bool pause)
{
#if defined(TAVOLINS_LEAKS_ARE_CHECKED)
    if (pause)
        __lsan_disable();
    else
        __lsan_enable();
#else
    Q_UNUSED(pause)
#endif
}

int memberCount(const QJsonValue &value)
{
    int count = 0;
    if (value.isArray()) {
        const QJsonArray array = value.toArray();
        for (const QJsonValue &element : array)
            count += memberCount(element);
    } else if (value.isObject()) {
        const QJsonObject object = value.toObject();
        count = object.size();
        for (const QJsonValue &member : object)
            count += memberCount(member);
    }
    return count;
}

/// Whether some object of the JSON \a text may have two members of one name. Exact for valid text;
/// for other text it only tells whether there are members at all.
bool mayRepeatMembers(const QByteArray &text)
{
    int written = 0;
    bool inString = false;
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) == '"')
            inString = !inString;
        else if (inString && text.at(i) == '\\')
            ++i;
        else if (!inString && text.at(i) == ':')
            ++written;
    }
    if (written == 0)
        return false;
    const QJsonDocument document = QJsonDocument::fromJson(text);
    const QJsonValue root = document.isArray() ? QJsonValue(document.array())
                                               : QJsonValue(document.object());
    return memberCount(root) != written;
}

int openFailureCount = 0;

void handleMessage(QtMsgType, const QMessageLogContext &, const QString &message)
{
    if (message == QLatin1String("Couldn't open file.")) {
        ++openFailureCount;
        return;
    }
    fprintf(stderr, "unexpected on Qt's log: %s\n", qPrintable(message));
    abort();
}

void ensureApplication()
{
    if (QCoreApplication::instance())
        return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_HASH_SEED", "0");
    static char name[] = "fuzz";
    static char *arguments[] = { name, nullptr };
    static int count = 1;
    // Never destroyed: libFuzzer leaves the process without returning.
    new QGuiApplication(count, arguments);
}

/// A folder of this process. scripts/fuzz chooses where, and removes it: libFuzzer ends without
/// running destructors.
QString baseFolder()
{
    static const QTemporaryDir folder;
    FuzzSession::check(folder.isValid(), "there is a folder to write to");
    return folder.path();
}

bool sameProperties(const QObject *one, const QObject *other)
{
    const QMetaObject *type = one->metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < type->propertyCount(); ++i) {
        if (type->property(i).read(one) != type->property(i).read(other))
            return false;
    }
    return true;
}

} // namespace

FuzzSession::FuzzSession()
{
    ensureApplication();
    m_previousHandler = qInstallMessageHandler(handleMessage);
    openFailureCount = 0;

    // The catalogue only ever grows, so each input gets a new one in the place of the old one.
    ThemeManager *manager = ThemeManager::getInstance();
    manager->~ThemeManager();
    settle();
    new (manager) ThemeManager;

    m_folder = baseFolder() + QLatin1String("/themes");
    check(QDir().mkpath(m_folder), "the folder can be created");
}

FuzzSession::~FuzzSession()
{
    QDir(m_folder).removeRecursively();
    settle();
    qInstallMessageHandler(m_previousHandler);
    if (m_leaksAreExpected)
        pauseLeakCheck(false);
}

ThemeManager *FuzzSession::manager() const
{
    return ThemeManager::getInstance();
}

QString FuzzSession::folder() const
{
    return m_folder;
}

QString FuzzSession::write(const QString &name, const QByteArray &content)
{
    // Qt's JSON parser (seen in 5.15.8) loses the values of members that are written twice.
    if (!m_leaksAreExpected) {
        pauseLeakCheck(true);
        m_leaksAreExpected = mayRepeatMembers(content);
        if (!m_leaksAreExpected)
            pauseLeakCheck(false);
    }
    QString path = m_folder + QLatin1Char('/') + name;
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        check(file.write(content) == content.size(), "the file can be written");
    return path;
}

int FuzzSession::openFailures() const
{
    return openFailureCount;
}

void FuzzSession::settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void FuzzSession::check(bool holds, const char *what)
{
    if (holds)
        return;
    fprintf(stderr, "does not hold: %s\n", what);
    abort();
}

ThemePrivate *FuzzSession::data(const Theme &theme)
{
    return qobject_cast<ThemePrivate *>(theme.colors()->parent());
}

bool FuzzSession::sameValues(const Theme &one, const Theme &other)
{
    return one.radius() == other.radius() && sameProperties(one.colors(), other.colors())
            && sameProperties(one.fonts(), other.fonts());
}
