#include "platform/native/qt/file_choosers.h"

#include <QApplication>
#include <QFileDialog>
#include <QHeaderView>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QPointer>
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
        setOption(QFileDialog::DontUseNativeDialog);
        ShowColumnsWhole();
    }

    QLineEdit *NameField() const
    {
        return findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    }

    // The path that was chosen, or would be by now; empty for none.
    QString Path() const
    {
        // A quote belongs to the name; Qt would take it for a mark between several names.
        const QString text = NameField()->text();
        return text.contains(QLatin1Char('"')) ? directory().absoluteFilePath(text)
                                               : selectedFiles().value(0);
    }

  protected:
    void accept() override
    {
        const QString text = NameField()->text();
        const QString path = Path();
        // A resource may be named like a path; only one that the user wrote is taken as such.
        if (text == offered && offered.contains(QLatin1Char('/')))
            Refuse(QStringLiteral("A file name cannot hold \"/\". Please change the name."));
        else if (static_cast<DWORD>(QFile::encodeName(path).size()) >= pathSize)
            Refuse(QStringLiteral("The path is too long: at most %1 bytes can be used.")
                       .arg(pathSize - 1));
        else if (text.contains(QLatin1Char('"')))
            AcceptQuoted(QFileInfo(path));
        else
            QFileDialog::accept();
    }

  private:
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

    void Refuse(const QString &text)
    {
        QMessageBox::warning(this, windowTitle(), text);
    }

    QString offered;
    DWORD pathSize;
};

} // namespace

// "Description", "*.A;*.B" becomes "Description (*.A *.B)"; "*.*" is every file.
static QStringList FiltersOf(const char *pairs)
{
    QStringList filters;
    while (*pairs) {
        const QString description = FromCaption(pairs);
        pairs += std::strlen(pairs) + 1;
        QStringList patterns = FromCaption(pairs).split(QLatin1Char(';'), Qt::SkipEmptyParts);
        pairs += std::strlen(pairs) + 1;
        patterns.replaceInStrings(QStringLiteral("*.*"), QStringLiteral("*"));
        filters.append(QStringLiteral("%1 (%2)").arg(description, patterns.join(QLatin1Char(' '))));
    }
    return filters;
}

static Chooser *MakeChooser(const FileChoice &choice, const QStringList &filters)
{
    QWidget *client = WidgetOf(choice.owner);
    // The name of a resource is in the code page, even where it could be UTF-8 as well.
    const QString offered = FromCodePage(choice.path);
    auto chooser =
        std::make_unique<Chooser>(client ? client->window() : nullptr, offered, choice.pathSize);
    chooser->setAcceptMode(choice.isSave ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    chooser->setFileMode(choice.isSave ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    chooser->setWindowModality(Qt::ApplicationModal);
    if (!filters.isEmpty()) {
        chooser->setNameFilters(filters);
        const auto index = static_cast<qsizetype>(choice.filterIndex) - 1;
        chooser->selectNameFilter(filters.value(index, filters.first()));
    }
    if (choice.folder)
        chooser->setDirectory(QFile::decodeName(choice.folder));
    else if (!lastFolder.isEmpty())
        chooser->setDirectory(lastFolder);
    chooser->NameField()->setText(offered);
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
    const QStringList filters = FiltersOf(choice->filters);
    const UsersLanguage language;
    const QPointer<Chooser> chooser = MakeChooser(*choice, filters);
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
            static_cast<DWORD>(filters.indexOf(chooser->selectedNameFilter()) + 1);
        lastFolder = chooser->directory().absolutePath();
    }
    DropLater(chooser);
    return isConfirmed;
}
