#include "platform/native/qt/file_choosers.h"

#include <QApplication>
#include <QFileDialog>
#include <QHeaderView>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QPointer>
#include <QStandardPaths>
#include <QTranslator>
#include <QTreeView>
#include <cstring>
#include <memory>

#include "platform/native/qt/frames.h"
#include "platform/native/qt/registry.h"
#include "platform/native/qt/text.h"
#include "platform/native/user/geometry.h"
#include "platform/native/user/queue.h"

// The folder that the user chose from last.
static QString lastFolder;

// Of a chooser when it opens.
constexpr QSize chooserSize(760, 480);

// Whether the program runs in a Flatpak, where it sees little of the user's files by itself.
static bool IsInFlatpak()
{
    return QFile::exists(QStringLiteral("/.flatpak-info"));
}

namespace
{

// While it lives Qt's own words are in the user's language, where Qt has it. No longer: the rest
// of the program speaks English, as its menus and messages do.
class UsersLanguage
{
  public:
    UsersLanguage()
    {
        if (words.load(QLocale(), QStringLiteral("qtbase"), QStringLiteral("_"),
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath)) &&
            QApplication::installTranslator(&words))
            direction = QLocale().textDirection();
    }

    Qt::LayoutDirection Direction() const
    {
        return direction;
    }

  private:
    QTranslator words; // takes itself out
    Qt::LayoutDirection direction = Qt::LeftToRight;
};

class Chooser : public QFileDialog
{
  public:
    Chooser(QWidget *parent, const QString &offeredName, DWORD bytes)
        : QFileDialog(parent), offered(offeredName), pathSize(bytes)
    {
        if (!IsInFlatpak())
            setOption(QFileDialog::DontUseNativeDialog);
        ShowColumnsWhole();
    }

    // Whether the desktop shows it, through the Flatpak's portal, instead of Qt.
    bool IsPortals() const
    {
        return !NameField();
    }

    void OfferName()
    {
        if (!IsPortals())
            NameField()->setText(offered);
        else // takes a path apart, and a name cannot be refused while it is open
            selectFile(QString(offered).replace(QLatin1Char('/'), QStringLiteral("%2F")));
    }

    // The path that was chosen, or would be by now; empty for none.
    QString Path() const
    {
        // A quote belongs to the name; Qt would take it for a mark between several names.
        const QString text = IsPortals() ? QString() : NameField()->text();
        return text.contains(QLatin1Char('"')) ? directory().absoluteFilePath(text)
                                               : selectedFiles().value(0);
    }

  protected:
    void accept() override
    {
        const QString path = Path();
        if (IsPortals()) {
            AcceptPortals(path);
            return;
        }
        const QString text = NameField()->text();
        // A resource may be named like a path; only one that the user wrote is taken as such.
        if (text == offered && offered.contains(QLatin1Char('/')))
            Refuse(QStringLiteral("A file name cannot hold \"/\". Please change the name."));
        else if (IsTooLong(path))
            RefuseLength();
        else if (text.contains(QLatin1Char('"')))
            AcceptQuoted(QFileInfo(path));
        else
            QFileDialog::accept();
    }

  private:
    QLineEdit *NameField() const
    {
        return findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    }

    bool IsTooLong(const QString &path) const
    {
        return static_cast<DWORD>(QFile::encodeName(path).size()) >= pathSize;
    }

    // The portal has closed it by now, and asked before a file is replaced.
    void AcceptPortals(const QString &path)
    {
        if (!IsTooLong(path)) {
            QFileDialog::accept();
            return;
        }
        RefuseLength();
        hide();
        open();
    }

    // What Qt's own accepting does with one path.
    void AcceptQuoted(const QFileInfo &file)
    {
        const bool isSave = acceptMode() == QFileDialog::AcceptSave;
        if (file.isDir())
            setDirectory(file.absoluteFilePath());
        else if (!isSave && !file.exists())
            Refuse(tr("%1\nFile not found.\nPlease verify the correct file name was given.")
                       .arg(file.fileName()));
        else if (!isSave || !file.exists() ||
                 QMessageBox::warning(
                     this, windowTitle(),
                     tr("%1 already exists.\nDo you want to replace it?").arg(file.fileName()),
                     QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes)
            QDialog::accept();
    }

    // Size, type and date are never cut; the names take what is left.
    void ShowColumnsWhole()
    {
        const auto *list = findChild<QTreeView *>(QStringLiteral("treeView"));
        if (!list)
            return;
        QHeaderView *header = list->header();
        header->setStretchLastSection(false);
        for (int column = 0; column < header->count(); ++column)
            header->setSectionResizeMode(column, column == 0 ? QHeaderView::Stretch
                                                             : QHeaderView::ResizeToContents);
        resize(chooserSize);
    }

    void RefuseLength()
    {
        Refuse(QStringLiteral("The path is too long: at most %1 bytes can be used.")
                   .arg(pathSize - 1));
    }

    void Refuse(const QString &text)
    {
        QMessageBox::warning(this, windowTitle(), text);
    }

    QString offered;
    DWORD pathSize;
};

} // namespace

// "*.A" becomes "*.[aA]".
static QString OfAnyCase(const QString &pattern)
{
    QString any;
    for (const QChar letter : pattern)
        if (letter.isLetter())
            any.append(QStringLiteral("[%1%2]").arg(letter.toLower()).arg(letter.toUpper()));
        else
            any.append(letter);
    return any;
}

// "Description", "*.A;*.B" becomes "Description (*.A *.B)"; "*.*" is every file. Portals look at
// the case of what is not told otherwise.
static QStringList FiltersOf(const char *pairs, bool isPortals)
{
    QStringList filters;
    while (*pairs) {
        const QString description = FromCaption(pairs);
        pairs += std::strlen(pairs) + 1;
        const QString text = FromCaption(pairs);
        QStringList patterns =
            (isPortals ? OfAnyCase(text) : text).split(QLatin1Char(';'), Qt::SkipEmptyParts);
        pairs += std::strlen(pairs) + 1;
        patterns.replaceInStrings(QStringLiteral("*.*"), QStringLiteral("*"));
        filters.append(QStringLiteral("%1 (%2)").arg(description, patterns.join(QLatin1Char(' '))));
    }
    return filters;
}

// Where a chooser starts; empty for where it likes. A portal hands files over in folders that
// hold nothing else, and take nothing.
static QString StartFolder(const FileChoice &choice)
{
    const QString folder = choice.folder ? QFile::decodeName(choice.folder) : lastFolder;
    const QString handedOver =
        QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + QStringLiteral("/doc/");
    return IsInFlatpak() && folder.startsWith(handedOver) ? QDir::homePath() : folder;
}

static Chooser *MakeChooser(const FileChoice &choice)
{
    QWidget *client = WidgetOf(choice.owner);
    // The name of a resource is in the code page, even where it could be UTF-8 as well.
    const QString offered = FromCodePage(choice.path);
    auto chooser =
        std::make_unique<Chooser>(client ? client->window() : nullptr, offered, choice.pathSize);
    chooser->setAcceptMode(choice.isSave ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    // A portal's has no title by itself.
    chooser->setWindowTitle(choice.isSave ? QFileDialog::tr("Save As") : QFileDialog::tr("Open"));
    chooser->setFileMode(choice.isSave ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    chooser->setWindowModality(Qt::ApplicationModal);
    const QStringList filters = FiltersOf(choice.filters, chooser->IsPortals());
    if (!filters.isEmpty()) {
        chooser->setNameFilters(filters);
        const auto index = static_cast<qsizetype>(choice.filterIndex) - 1;
        chooser->selectNameFilter(filters.value(index, filters.first()));
    }
    if (const QString folder = StartFolder(choice); !folder.isEmpty())
        chooser->setDirectory(folder);
    chooser->OfferName();
    return chooser.release();
}

// Loops until the chooser closes by itself, or goes with its owner or the program.
static void Loop(const QPointer<Chooser> &chooser)
{
    while (chooser && chooser->isVisible()) {
        MSG message;
        const Taken taken = WaitForMessage(&message);
        if (taken == Taken::Message)
            DispatchMessageA(&message);
        else if (taken == Taken::Quit)
            return;
    }
}

bool ChooseFile(FileChoice *choice)
{
    const UsersLanguage language;
    const QPointer<Chooser> chooser = MakeChooser(*choice);
    chooser->setLayoutDirection(language.Direction());
    SetTakesInput(choice->owner, false);
    chooser->open();
    Loop(chooser);
    SetTakesInput(choice->owner, true);
    ActivateFrame(choice->owner);
    if (!chooser)
        return false;
    const QByteArray path = QFile::encodeName(chooser->Path());
    const bool isConfirmed = chooser->result() == QDialog::Accepted && !path.isEmpty();
    if (isConfirmed) {
        std::memcpy(choice->path, path.constData(), static_cast<size_t>(path.size()) + 1);
        choice->filterIndex =
            static_cast<DWORD>(chooser->nameFilters().indexOf(chooser->selectedNameFilter()) + 1);
        lastFolder = QFileInfo(chooser->Path()).absolutePath();
    }
    DropLater(chooser);
    return isConfirmed;
}
