#include "support/Desk.h"
#include "support/PdfText.h"
#include "support/Sight.h"

#include <QFileDialog>
#include <QMenu>
#include <QPrintPreviewWidget>
#include <QStringDecoder>
#include <QTreeView>

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

// A story is what a user and the device do, a line each after "> ", and after each line what then
// changes of all that a user sees, hears from a screen reader or finds in a file. "look" compares
// with a picture. With TENSIO_ACCEPT=1 stories and pictures are written again: read what differs.

using namespace tensio;

namespace {

std::filesystem::path const folder(TENSIO_STORIES);
bool const isAccepting = qEnvironmentVariableIsSet("TENSIO_ACCEPT");

std::vector<double> numbers(QString const& text)
{
    std::vector<double> all;
    for (auto const& word : text.split(u' '))
        all.push_back(word.toDouble());
    return all;
}

// The largest difference of a colour, where eight pixels of the window have become one.
int farDifference(QImage const& picture, QImage const& other)
{
    if (picture.size() != other.size())
        return 255;
    auto const far = [](QImage const& image) {
        return image.scaled(image.size() / 4, {}, Qt::SmoothTransformation)
            .convertToFormat(QImage::Format_RGBA8888);
    };
    auto const a = far(picture);
    auto const b = far(other);
    int largest = 0;
    for (qsizetype at = 0; at < a.sizeInBytes(); ++at)
        largest = std::max(largest, std::abs(a.constBits()[at] - b.constBits()[at]));
    return largest;
}

class Story {
public:
    QString told;

    void run(QString const& line)
    {
        told += "> " + line + u'\n';
        auto const name = line.section(u' ', 0, 0).toStdString();
        m_commands.at(name)(line.section(u' ', 1));
        for (int turn = 0; turn < 10; ++turn)
            QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::setActiveWindow(&window());
        tell();
    }

private:
    void start(QString const& names)
    {
        std::vector<std::string> all;
        for (auto const& name : names.split(u' ', Qt::SkipEmptyParts))
            all.push_back(name.toStdString());
        m_desk.reset();
        auto& desk = m_desk.emplace(all);
        desk.window.resize(1040, 692 + desk.window.menuBar()->height());
        desk.saving.answer = "/folder/file";
        desk.saving.picture = "picture";
        desk.alerts.whileOpen = [&] { tell(); };
        m_sight = {};
        m_written.clear();
    }

    QWidget& window()
    {
        for (auto* window : {QApplication::activePopupWidget(), QApplication::activeModalWidget(),
                 QApplication::activeWindow()}) {
            if (window)
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
    void press(QString const& text)
    {
        auto const key = QKeySequence(text)[0];
        QTest::keyClick(QApplication::focusWidget(), key.key(), key.keyboardModifiers());
    }
    void type(QString const& text)
    {
        QInputMethodEvent event;
        event.setCommitString(text);
        QApplication::sendEvent(QApplication::focusWidget(), &event);
    }
    void clickRight(QString const& name)
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, {}, {});
        QApplication::sendEvent(&part(name), &event);
    }
    void choose(QString const& title)
    {
        auto const all = window().actions();
        (*std::ranges::find_if(all, [&](auto* item) {
            return item->text().startsWith(title);
        }))->trigger();
    }

    void tell()
    {
        Sight sight;
        sight.parts.push_back({"screen", m_desk->isSleepInhibited ? "stays on" : "may sleep"});
        sight.parts.push_back(
            {"save panel", m_desk->saving.isSimulated ? "of simulated readings" : "usual"});
        for (auto const& [key, value] : m_desk->userDefaults.stored)
            sight.parts.push_back({QString::fromStdString(key), QString::number(value)});
        told += sight.changesSince(m_sight);
        m_sight = std::move(sight);
        for (auto const& call : std::exchange(m_desk->port->calls, {}))
            told += "port: " + QString::fromStdString(call) + u'\n';
        for (auto const& message : std::exchange(m_desk->alerts.messages, {}))
            told += QString("alert %1: ").arg(static_cast<int>(m_desk->alerts.style))
                + QString::fromStdString(message).replace(u'\n', u'⏎') + u'\n';
        for (auto const& line : std::exchange(m_desk->saving.log, {}))
            told += QString::fromStdString(line) + u'\n';
        if (m_written == m_desk->saving.written)
            return;
        m_written = m_desk->saving.written;
        auto const bytes = QByteArray::fromStdString(m_written);
        told += bytes.startsWith("%PDF") ? QString::fromStdString(pdfText(m_written))
                                         : QStringDecoder(QStringDecoder::Utf16)(bytes);
        told += u'\n';
    }

    void look(QString const& name)
    {
        QImage picture(window().size(), QImage::Format_RGB32);
        window().render(&picture);
        picture = picture.scaled(picture.size() / 2, {}, Qt::SmoothTransformation);
        picture.setText("Qt", qVersion());
        auto const file = QString::fromStdString((folder / name.toStdString()).string() + ".png");
        if (isAccepting)
            picture.save(file);
        // At other ratios all sizes are rounded otherwise. Each Qt draws letters a little
        // differently, and puts the page of a preview elsewhere.
        QImage const kept(file);
        bool const isSameQt = kept.text("Qt") == qVersion();
        bool const isKept = window().devicePixelRatio() == 1.0
            && (isSameQt || !window().findChild<QPrintPreviewWidget*>());
        EXPECT_TRUE(!isKept || farDifference(picture, kept) <= (isSameQt ? 4 : 16))
            << name.toStdString();
    }

    std::optional<Desk> m_desk;
    Sight m_sight;
    std::string m_written;
    std::map<std::string, std::function<void(QString const&)>> const m_commands {
        {"start", [&](auto const& names) { start(names); }},
        {"everything", [&](auto const&) { m_sight.parts.clear(); }},
        {"look", [&](auto const& name) { look(name); }},
        {"click", [&](auto const& name) { QTest::mouseClick(&part(name), Qt::LeftButton); }},
        {"clickRight", [&](auto const& name) { clickRight(name); }},
        {"choose", [&](auto const& title) { choose(title); }},
        {"menu", [&](auto const& title) { m_desk->command(title.toUtf8()).trigger(); }},
        {"key", [&](auto const& text) { press(text); }},
        {"type", [&](auto const& text) { type(text); }},
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
        {"loss", [&](auto const&) { m_desk->port->playLoss(); }},
        {"unplug", [&](auto const&) { m_desk->ports.ports.clear(); }},
        {"plug",
            [&](auto const& kind) {
                m_desk->port->isSimulator = kind == u"simulator";
                m_desk->ports.ports = {m_desk->port};
            }},
        {"wait", [&](auto const& text) { m_desk->runLoop.advance(Seconds(text.toDouble())); }},
        {"minutes",
            [&](auto const& text) { m_desk->clock.date += std::chrono::minutes(text.toInt()); }},
        {"answer", [&](auto const& text) { m_desk->alerts.answer = text.toUInt(); }},
        {"disk", [&](auto const& text) { m_desk->saving.diskIsFull = text == u"full"; }},
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
    for (auto const& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".txt")
            continue;
        std::ifstream file(entry.path());
        QStringList expected;
        Story story;
        for (std::string line; std::getline(file, line);) {
            expected << QString::fromStdString(line);
            if (line.starts_with("> "))
                story.run(expected.back().mid(2));
        }
        if (isAccepting)
            std::ofstream(entry.path()) << story.told.toStdString();
        auto const told = story.told.split(u'\n');
        auto const differing = std::ranges::mismatch(told, expected << "").in1;
        EXPECT_TRUE(isAccepting || differing == told.end())
            << entry.path() << ":" << differing - told.begin() + 1 << ": "
            << told.value(differing - told.begin()).toStdString();
    }
}
