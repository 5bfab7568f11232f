#include "fuzz/programs/stage.h"

#include "fuzz/programs/standin.h"
#include "fuzz/programs/writer.h"
#include "manager/thememanager.h"
#include "reliability/themelook.h"
#include "theme/theme.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QScopedValueRollback>
#include <QtCore/QTimer>
#include <QtQuick/QQuickItem>

namespace {

const int depthLimit = 3;
const int firstThemes = 3;
const int seedLimit = 19;
const int pointerRole = Qt::UserRole + 1;

Stage *theStage = nullptr;

bool isIn(const QObject *object, const QObject *ancestor)
{
    for (; object; object = object->parent()) {
        if (object == ancestor)
            return true;
    }
    return false;
}

} // namespace

Mark::Mark(QObject *parent)
    : QObject(parent)
{
}

Mark::~Mark()
{
    if (theStage)
        theStage->leave(this);
}

void Mark::classBegin()
{
    if (theStage)
        theStage->begin(this);
}

void Mark::componentComplete()
{
    if (theStage)
        theStage->complete(this);
}

Stage::Stage(bool usesStandIn)
    : m_usesStandIn(usesStandIn)
{
    theStage = this;
    if (m_usesStandIn)
        return;
    for (int i = 1; i <= firstThemes; ++i) {
        const QString name = QString::number(i);
        writeTheme(name, i, nullptr);
        ThemeManager::getInstance()->loadThemes(m_files.filePath(name));
    }
    ThemeManager::getInstance()->setCurrentIndex(1);
}

Stage::~Stage()
{
    theStage = nullptr;
}

void Stage::begin(Mark *mark)
{
    m_marks.append({ mark, false });
    ++m_creating;
}

void Stage::complete(Mark *mark)
{
    for (Entry &entry : m_marks) {
        if (entry.mark == mark) {
            entry.isComplete = true;
            --m_creating;
        }
    }
}

void Stage::leave(Mark *mark)
{
    for (int i = 0; i < m_marks.size(); ++i) {
        if (m_marks.at(i).mark != mark)
            continue;
        if (!m_marks.at(i).isComplete)
            --m_creating;
        m_marks.remove(i);
        return;
    }
}

QObjectList Stage::shown() const
{
    QObjectList objects;
    for (const Entry &entry : m_marks) {
        if (entry.isComplete && entry.mark->parent())
            objects.append(entry.mark->parent());
    }
    return objects;
}

QString Stage::writeTheme(const QString &folder, int seed, QString *title)
{
    const QString text = QStringLiteral("Theme %1").arg(m_themes++);
    QString path = m_files.filePath(folder + QStringLiteral("/%1.thm").arg(m_themes));
    QDir().mkpath(QFileInfo(path).path());
    write(path, themeLookText(text, seed));
    if (title)
        *title = text;
    return path;
}

void Stage::write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("can't write %s", qPrintable(path));
}

bool Stage::mayAct()
{
    if (!m_isActing || !m_root || m_depth >= depthLimit || m_actionsLeft <= 0)
        return false;
    --m_actionsLeft;
    return true;
}

void Stage::call(int action)
{
    if (!mayAct())
        return;
    const QScopedValueRollback<int> depth(m_depth, m_depth + 1);
    if (m_creating > 0)
        callIn(m_root, "mild", action % ProgramWriter::mildActionCount);
    else
        callIn(m_root, "act", action);
}

void Stage::callIn(QObject *root, const char *name, int index)
{
    const QByteArray function = name + QByteArray::number(index);
    if (root->metaObject()->indexOfMethod((function + "()").constData()) >= 0)
        QMetaObject::invokeMethod(root, function.constData());
}

void Stage::run(int action)
{
    call(action);
}

void Stage::runMildly(int action)
{
    const QScopedValueRollback<int> creating(m_creating, m_creating + 1);
    call(action);
}

void Stage::runGently(int action)
{
    const QScopedValueRollback<int> gentle(m_gentle, m_gentle + 1);
    call(action);
}

void Stage::loop(int action)
{
    if (m_gentle > 0 || m_creating > 0 || !mayAct())
        return;
    const QScopedValueRollback<int> depth(m_depth, m_depth + 1);
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        call(action);
        // What is to be deleted is deleted in this loop, too.
        QTimer::singleShot(0, &loop, [&] { QTimer::singleShot(0, &loop, &QEventLoop::quit); });
    });
    loop.exec();
}

bool Stage::mayDelete(QObject *object) const
{
    if (!object || m_gentle > 0 || m_creating > 0 || isIn(m_root, object))
        return false;
    for (const Entry &entry : m_marks) {
        if (entry.mark->isOwned && entry.mark->parent() == object)
            return false;
    }
    return true;
}

void Stage::kill(QObject *object)
{
    if (mayDelete(object))
        delete object;
}

void Stage::killAny(int index)
{
    const QObjectList objects = shown();
    if (!objects.isEmpty())
        kill(objects.at(index % objects.size()));
}

void Stage::deleteLater(QObject *object)
{
    if (mayDelete(object))
        object->deleteLater();
}

void Stage::disconnect(QObject *object)
{
    if (object)
        object->disconnect();
}

void Stage::reparent(QObject *item, QObject *parent)
{
    auto *child = qobject_cast<QQuickItem *>(item);
    auto *newParent = qobject_cast<QQuickItem *>(parent);
    if (!child || !newParent || child == newParent || child->isAncestorOf(newParent))
        return;
    child->setParentItem(newParent);
}

int Stage::row(int n) const
{
    return m_usesStandIn ? n : n % ThemeManager::getInstance()->rowCount();
}

QObject *Stage::theme(int n) const
{
    if (m_usesStandIn)
        return StandInManager::instance()->theme(n);
    const ThemeManager *manager = ThemeManager::getInstance();
    return manager->index(row(n)).data(pointerRole).value<QObject *>();
}

void Stage::deleteTheme(int n)
{
    if (!m_usesStandIn)
        delete theme(n);
}

void Stage::deleteGlobalTheme()
{
    if (!m_usesStandIn)
        delete Theme::global();
}

QObject *Stage::themeOf(QObject *object) const
{
    if (m_usesStandIn)
        return object->findChild<StandInTheme *>(QString(), Qt::FindDirectChildrenOnly);
    return Theme::attachedTheme(object);
}

QString Stage::folder()
{
    const QString name = QStringLiteral("folder %1").arg(++m_folders);
    writeTheme(name, m_folders % seedLimit, nullptr);
    writeTheme(name, (m_folders + 5) % seedLimit, &m_folderTitle);
    return m_files.filePath(name);
}

void Stage::save()
{
    if (m_usesStandIn)
        return;
    const Theme *current = ThemeManager::getInstance()->current();
    if (!current->filename().isEmpty())
        write(current->filename(), themeLookText(current->title(), ++m_edits % seedLimit));
}

void Stage::reload()
{
    if (m_usesStandIn) {
        StandInManager::instance()->update();
        return;
    }
    save();
    Theme *current = ThemeManager::getInstance()->current();
    if (!current->filename().isEmpty())
        current->reload();
}

void Stage::crash()
{
    qFatal("crashed on purpose");
}

void Stage::leak()
{
    (new QObject)->setParent(qApp);
}

void Stage::listen()
{
    const auto *data = qobject_cast<ThemePrivate *>(Theme::global()->colors()->parent());
    connect(data, &ThemePrivate::updateTheme, qApp, [] {});
}
