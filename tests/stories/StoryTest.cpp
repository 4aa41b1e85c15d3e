#include "controls/OrvMenuItemView.h"
#include "support/Desk.h"
#include "support/PdfText.h"
#include "support/Sight.h"

#include <QAccessible>
#include <QClipboard>
#include <QDateEdit>
#include <QDesktopServices>
#include <QFileDialog>
#include <QMenu>
#include <QPageRanges>
#include <QPrintPreviewWidget>
#include <QStringDecoder>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeView>
#include <QUrl>

#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>

// A story is what a user and the device do, a line each after "> ", and after each line what then
// changes of all that a user sees, hears from a screen reader or finds in a file. "look" compares
// with a picture. With TENSIO_ACCEPT=1 stories and pictures are written again: read what differs.

using namespace tensio;

namespace {

std::filesystem::path const stories(TENSIO_STORIES);
// After which the screen shows what has come.
constexpr Seconds frame {1.0 / 60.0};
bool const isAccepting = qgetenv("TENSIO_ACCEPT") == "1";

std::vector<double> numbers(QString const& text)
{
    std::vector<double> all;
    for (auto const& word : text.split(u' ')) {
        bool isNumber = false;
        all.push_back(word.toDouble(&isNumber));
        if (!isNumber)
            throw std::invalid_argument("no number");
    }
    return all;
}

// Of two words; any other is a mistake in the story.
bool isFirst(QString const& word, char const* first, char const* second)
{
    if (word != QLatin1String(first) && word != QLatin1String(second))
        throw std::invalid_argument("neither of the two words");
    return word == QLatin1String(first);
}

// The largest difference of a colour, where four pixels of the window have become one.
int farDifference(QImage const& picture, QImage const& other)
{
    if (picture.size() != other.size())
        return 255;
    auto const far = [](QImage const& image) {
        return image.scaled(image.size() / 2, {}, Qt::SmoothTransformation)
            .convertToFormat(QImage::Format_RGBA8888);
    };
    auto const a = far(picture);
    auto const b = far(other);
    int largest = 0;
    for (qsizetype at = 0; at < a.sizeInBytes(); ++at)
        largest = std::max(largest, std::abs(a.constBits()[at] - b.constBits()[at]));
    return largest;
}

template<typename Type>
bool shows(QWidget const& window)
{
    auto const* found = window.findChild<Type*>();
    return found && found->isVisible();
}

class Story {
public:
    QString told;

    Story()
    {
        // Pictures do not depend on when the cursor blinks.
        QApplication::setCursorFlashTime(0);
        QDesktopServices::setUrlHandler("file", &m_fileManager, "urlSelected");
        QObject::connect(&m_fileManager, &QFileDialog::urlSelected,
            [this](QUrl const& url) { told += "opens " + url.path() + u'\n'; });
    }

    void run(QString const& line)
    {
        told += "> " + line + u'\n';
        auto const name = line.section(u' ', 0, 0).toStdString();
        try {
            m_commands.at(name)(line.section(u' ', 1));
        } catch (std::exception const& error) {
            ADD_FAILURE() << line.toStdString() << ": " << error.what();
        }
        processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::setActiveWindow(&window());
        tell();
    }

private:
    static void processEvents()
    {
        for (int turn = 0; turn < 10; ++turn)
            QCoreApplication::processEvents();
    }

    void start(QString const& names, std::map<std::string, float> const& settings = {})
    {
        std::vector<std::string> all;
        for (auto const& name : names.split(u' ', Qt::SkipEmptyParts))
            all.push_back(name.toStdString());
        m_desk.emplace();
        m_sight = Sight(); // A first start: what differs is told.
        QGuiApplication::clipboard()->clear();
        auto& desk = m_desk.emplace(all, settings);
        desk.window.resize(1040, 692 + desk.window.menuBar()->height());
        desk.saving.answer = "/folder/file";
        desk.saving.picture = "picture";
        desk.saving.frame = {57.5, 0.25, 1040.0, 692.5};
        desk.alerts.whileOpen = [&] { tell(); };
        m_written.clear();
    }

    QWidget& window()
    {
        for (auto* window : {QApplication::activePopupWidget(), QApplication::activeModalWidget(),
                 QApplication::activeWindow()}) {
            if (window && window->isVisible())
                return *window;
        }
        return m_desk->window;
    }
    QWidget& part(QString const& name)
    {
        auto const& widgets = Sight().widgets;
        auto const found = std::ranges::find_if(widgets, [&](auto const& each) {
            return each.second->window() == &window() && each.first.section(u'/', -1) == name;
        });
        if (found == widgets.end())
            throw std::invalid_argument("no " + name.toStdString());
        return *found->second;
    }
    static void press(QString const& text)
    {
        auto const key = QKeySequence(text)[0];
        auto* const menu = QApplication::activePopupWidget();
        QTest::keyClick(
            menu ? menu : QApplication::focusWidget(), key.key(), key.keyboardModifiers());
    }
    static void type(QString const& text)
    {
        QInputMethodEvent event;
        event.setCommitString(text);
        QApplication::sendEvent(QApplication::focusWidget(), &event);
    }
    // A name, and how often.
    void click(QString const& words)
    {
        auto& widget = part(words.section(u' ', 0, 0));
        for (int times = std::max(words.section(u' ', 1).toInt(), 1); times > 0; --times)
            QTest::mouseClick(&widget, Qt::LeftButton);
    }
    void clickRight(QString const& name)
    {
        QTest::mouseClick(&part(name), Qt::RightButton);
        QContextMenuEvent event(QContextMenuEvent::Mouse, {}, {});
        QApplication::sendEvent(&part(name), &event);
    }
    // Picture, part under the mouse.
    void lookHovered(QStringList const& names)
    {
        QEnterEvent enter({}, {}, {});
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&part(names.at(1)), &enter);
        look(names, window());
        QApplication::sendEvent(&part(names.at(1)), &leave);
    }
    // Picture, button. Until its menu closes, the button does not return.
    void openMenu(QString const& words)
    {
        QTimer::singleShot(0, qApp, [=, this] {
            press("Down");
            QEnterEvent event({}, {}, {});
            if (auto const rows = window().findChildren<OrvMenuItemView*>(); !rows.isEmpty())
                QApplication::sendEvent(rows.back(), &event);
            tell();
            look({words.section(u' ', 0, 0)}, window());
            window().close();
        });
        QTest::mouseClick(&part(words.section(u' ', 1)), Qt::LeftButton);
    }
    // As a screen reader does: the first of its actions, which may open a menu.
    void act(QString const& name)
    {
        auto& spoken = *QAccessible::queryAccessibleInterface(&part(name));
        auto const actions = spoken.actionInterface()->actionNames();
        spoken.actionInterface()->doAction(actions[0]);
        QTimer::singleShot(0, qApp, [actions, &spoken, this] {
            told += QString("can: %1, has %2\n").arg(actions.join(" ")).arg(spoken.childCount());
            tell();
            if (auto* menu = QApplication::activePopupWidget())
                menu->close();
        });
    }
    void choose(QString const& title)
    {
        auto const all = window().findChildren<QAction*>();
        auto const found
            = std::ranges::find_if(all, [&](auto* item) { return item->text().startsWith(title); });
        if (found == all.end())
            throw std::invalid_argument("no such item");
        (*found)->trigger();
    }
    // "none", or the paper and the pages that the user asks for.
    void setPrinter(QString const& text)
    {
        m_desk->hasPrinter = text != u"none";
        m_desk->changePrinter = [=, this](QPrinter& printer) {
            told += "panel of " + printer.docName() + u'\n';
            printer.setOutputFileName(m_folder.filePath("printed"));
            printer.setPageSize(QPageSize(text.startsWith("A7") ? QPageSize::A7 : QPageSize::A4));
            if (auto const pages = text.section(u' ', 1); !pages.isEmpty())
                printer.setPageRanges(QPageRanges::fromString(pages));
        };
    }
    // Before the others: name, node, vendor, product, serial number, "other", "simulated", "open",
    // obstacle.
    void inspect(QStringList const& words)
    {
        std::array<std::string, 9> all;
        std::ranges::transform(words, all.begin(), &QString::toStdString);
        m_desk->inspected.insert(m_desk->inspected.begin(),
            {all[0], all[1], all[2], all[3], all[4], !all[5].empty(), !all[6].empty(),
                !all[7].empty(), all[8]});
    }

    void tell()
    {
        Sight sight;
        sight.parts.push_back({"screen", m_desk->isSleepInhibited ? "stays on" : "may sleep"});
        sight.parts.push_back(
            {"save panel", m_desk->saving.isSimulated ? "of simulated readings" : "usual"});
        auto& store = m_desk->store;
        if (auto const offered = store.unsavedSession())
            sight.parts.push_back(
                {"next start", "offers " + QString::fromStdString(offered->name)});
        if (!store.transferred.empty())
            sight.parts.push_back({"backup", QString::fromStdString(store.transferred)});
        for (auto const& [key, value] : m_desk->userDefaults.stored)
            sight.parts.push_back(
                {QString::fromStdString(key), QString::number(static_cast<double>(value))});
        if (auto const times = m_desk->userDefaults.synchronizations; times > 0)
            sight.parts.push_back({"settings stored", QString::number(times)});
        if (auto text = QGuiApplication::clipboard()->text(); !text.isEmpty())
            sight.parts.push_back({"clipboard", text.replace(u'\n', u'⏎')});
        told += sight.changesSince(m_sight);
        m_sight = std::move(sight);
        for (auto const& call : std::exchange(m_desk->port->calls, {}))
            told += "port: " + QString::fromStdString(call) + u'\n';
        for (auto const& message : std::exchange(m_desk->alerts.messages, {})) {
            told += QString("alert %1: ").arg(static_cast<int>(m_desk->alerts.style))
                + QString::fromStdString(message).replace(u'\n', u'⏎');
            for (auto const& button : m_desk->alerts.buttons)
                told += " [" + QString::fromStdString(button) + u']';
            told += u'\n';
        }
        for (auto const& line : std::exchange(m_desk->saving.log, {}))
            told += QString::fromStdString(line) + u'\n';
        if (QFile printed(m_folder.filePath("printed")); printed.open(QIODevice::ReadOnly)) {
            told += "printed: " + QString::fromStdString(pdfText(printed.readAll().toStdString()))
                + u'\n';
            printed.remove();
        }
        if (m_written == m_desk->saving.written)
            return;
        m_written = m_desk->saving.written;
        auto const bytes = QByteArray::fromStdString(m_written);
        if (bytes.startsWith("%PDF"))
            told += QString::fromStdString(pdfText(m_written));
        else
            told += bytes.startsWith("\xff\xfe") ? QStringDecoder(QStringDecoder::Utf16)(bytes)
                                                 : QString::fromUtf8(bytes);
        told += u'\n';
    }

    // The window, or only the parts that are named after the picture.
    void look(QStringList const& names, QWidget& window)
    {
        m_desk->runLoop.advance(frame);
        QImage picture(window.size(), QImage::Format_RGB32);
        // The guide reads a picture after it was to be drawn for the first time.
        window.render(&picture);
        processEvents();
        window.render(&picture);
        QRect area;
        for (auto const& each : names.mid(1))
            area |= QRect(part(each).mapTo(&window, QPoint()), part(each).size());
        picture = picture.copy(area);
        picture = picture.scaled(picture.size() / 2, {}, Qt::SmoothTransformation);
        picture.setText("Qt", qVersion());
        auto const name = names[0].toStdString();
        auto const file = QString::fromStdString((stories / name).string() + ".png");
        // At other ratios all sizes are rounded otherwise. Each Qt draws letters a little
        // differently, and has other dates and previews.
        QImage const kept(file);
        EXPECT_TRUE(isAccepting || !kept.isNull()) << name;
        bool const isSameQt = kept.isNull() || kept.text("Qt") == qVersion();
        bool const isKept = window.devicePixelRatio() == 1.0
            && (isSameQt || !(shows<QPrintPreviewWidget>(window) || shows<QDateEdit>(window)));
        int const differing = isKept ? farDifference(picture, kept) : 0;
        bool const isSame = differing <= (isSameQt ? 4 : 40);
        EXPECT_TRUE(isSame || (isAccepting && picture.save(file)))
            << name << " differs by " << differing;
    }

    QTemporaryDir const m_folder;
    QFileDialog m_fileManager;
    Subscription m_openedUrls {[] { QDesktopServices::unsetUrlHandler("file"); }};
    std::optional<Desk> m_desk;
    Sight m_sight;
    std::string m_written;
    std::map<std::string, std::function<void(QString const&)>> const m_commands {
        {"start", [&](auto const& names) { start(names); }},
        {"everything", [&](auto const&) { m_sight.parts.clear(); }},
        {"restart", [&](auto const&) { start({}, std::map(m_desk->userDefaults.stored)); }},
        {"look", [&](auto const& names) { look(names.split(u' '), window()); }},
        {"lookHovered", [&](auto const& names) { lookHovered(names.split(u' ')); }},
        {"lookBehind", [&](auto const& name) { look({name}, m_desk->window); }},
        {"click", [&](auto const& words) { click(words); }},
        {"clickRight", [&](auto const& name) { clickRight(name); }},
        {"openMenu", [&](auto const& words) { openMenu(words); }},
        {"act", [&](auto const& name) { act(name); }},
        {"choose", [&](auto const& title) { choose(title); }},
        {"menu", [&](auto const& title) { m_desk->command(title.toUtf8()).trigger(); }},
        {"key", [&](auto const& text) { press(text); }},
        {"type", [&](auto const& text) { type(text); }},
        {"pick",
            [&](auto const& row) {
                // In the menu's own event loop.
                QTimer::singleShot(0, &window(), [this, row] {
                    tell();
                    QTest::mouseRelease(&part(row), Qt::LeftButton);
                });
                press("Down");
            }},
        {"width", [&](auto const& text) { m_desk->window.resize(text.toInt(), 500); }},
        {"minimise",
            [&](auto const&) {
                QHideEvent event;
                QSpontaneKeyEvent::setSpontaneous(&event);
                qApp->notify(&window(), &event);
            }},
        {"close", [&](auto const&) { window().close(); }},
        {"row",
            [&](auto const& row) {
                auto& list = find<QTreeView>(window());
                list.setCurrentIndex(list.model()->index(row.toInt() - 1, 0));
            }},
        {"file",
            [&](auto const& path) {
                auto* chooser = dynamic_cast<QFileDialog*>(&window());
                Q_EMIT chooser->fileSelected(path);
                delete chooser;
            }},
        {"opened", [&](auto const&) { m_desk->port->delegate->serialPortWasOpened(); }},
        {"receive", [&](auto const& text) { m_desk->receive(numbers(text)); }},
        {"press", [&](auto const& text) { m_desk->press(numbers(text)); }},
        {"presses",
            [&](auto const& text) {
                for (int count = text.toInt(); count > 0; --count)
                    m_desk->press({20.0});
            }},
        {"wave",
            [&](auto const& text) {
                for (int index = 0; index < text.toInt(); ++index)
                    m_desk->receive({35.0 + 30.0 * std::sin(index * 0.07)});
            }},
        {"loss", [&](auto const&) { m_desk->port->playLoss(); }},
        {"doubleClick",
            [&](auto const& row) {
                auto& list = find<QTreeView>(window());
                auto const place = list.visualRect(list.model()->index(row.toInt() - 1, 0));
                QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place.center());
                QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place.center());
            }},
        {"damage",
            [&](auto const& session) {
                auto& stored = m_desk->store.stored.at(session.toInt());
                stored.measurements.pop_back();
                stored.isComplete = false;
            }},
        {"lose",
            [&](auto const& session) {
                m_desk->store.isComplete = m_desk->store.stored.erase(session.toInt()) == 0;
            }},
        {"transfer",
            [&](auto const& text) {
                auto const words = numbers(text);
                m_desk->store.transferEnd = static_cast<TransferState>(words.at(0));
                m_desk->store.transferCount = static_cast<int>(words.at(1));
            }},
        {"unplug", [&](auto const&) { m_desk->ports.ports.clear(); }},
        {"plug",
            [&](auto const& kind) {
                m_desk->port->isSimulator = isFirst(kind, "simulator", "device");
                m_desk->ports.ports = {m_desk->port};
            }},
        {"printer", [&](auto const& text) { setPrinter(text); }},
        {"port",
            [&](auto const& text) { inspect(QString(text).replace(u'⏎', u'\n').split(u',')); }},
        {"wait", [&](auto const& text) { m_desk->runLoop.advance(Seconds(text.toDouble())); }},
        {"minutes",
            [&](auto const& text) { m_desk->clock.date += std::chrono::minutes(text.toInt()); }},
        {"answer", [&](auto const& text) { m_desk->alerts.answer = text.toUInt(); }},
        {"disk",
            [&](auto const& text) { m_desk->saving.diskIsFull = isFirst(text, "full", "free"); }},
        {"saveAs", [&](auto const& path) { m_desk->saving.answer = path.toStdString(); }},
        {"cancel", [&](auto const&) { m_desk->saving.answer.reset(); }},
        {"refuse",
            [&](auto const& text) {
                m_desk->store.reason = static_cast<StoreProblem>(text.section(u' ', 0, 0).toInt());
                m_desk->store.refusals = text.section(u' ', 1).toInt();
            }},
    };
};

} // namespace

TEST(Stories, GoAsTheyAreTold)
{
    using Entries = std::filesystem::directory_iterator;
    int count = 0;
    for (auto const& path : std::set<std::filesystem::path>(Entries(stories), Entries())) {
        if (path.extension() != ".txt")
            continue;
        ++count;
        std::ifstream file(path);
        QString expected;
        Story story;
        for (std::string line; std::getline(file, line);) {
            bool const isCommand = line.starts_with("> ");
            // What follows a difference would only differ, too, or crash.
            if (isCommand && !isAccepting && story.told != expected)
                break;
            expected += QString::fromStdString(line) + u'\n';
            if (isCommand)
                story.run(QString::fromStdString(line.substr(2)));
        }
        if (isAccepting)
            std::ofstream(path) << story.told.toStdString();
        auto const told = story.told.split(u'\n');
        auto const lines = expected.split(u'\n');
        auto const line = std::ranges::mismatch(told, lines).in1 - told.begin();
        EXPECT_TRUE(isAccepting || story.told == expected)
            << path << ":" << line + 1 << "\n- " << lines.value(line).toStdString() << "\n+ "
            << told.value(line).toStdString();
    }
    EXPECT_GT(count, 0);
    EXPECT_FALSE(isAccepting) << "accepted; read what differs and run again";
}
