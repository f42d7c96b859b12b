// SPDX-License-Identifier: MIT
#include <platform/plist/PropertyListXmlPieces.h>

#include <QDeadlineTimer>
#include <QTest>

#include <algorithm>
#include <numeric>
#include <random>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;
using PropertyList::Value;

class PropertyListXmlPiecesTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    /// Whatever is done to the lists, and however often the deadline comes between.
    void piecesGiveWhatTheWholeGives()
    {
        std::mt19937 random;
        const auto below = [&random](qsizetype end) { return qsizetype(random() % size_t(end)); };
        const auto entry = [&] { return Dictionary::create({{u"text"_s, QString(below(400), u'x')}}); };
        const auto list = Array::create();
        const auto nested = Array::create({entry()});
        const auto root = Dictionary::create({{u"list"_s, list}, {u"none"_s, Array::create()}, {u"other"_s, 1}});
        PropertyList::XmlPieces pieces;
        for (int round = 0; round < 90; ++round) {
            if (round % 30 == 0) {
                for (const Value& other :
                    {Value(), Value(u"text"_s), Value(Dictionary::create({{u"nested"_s, nested}}))}) {
                    list->append(other);
                }
                for (int i = 0; i < 500; ++i) {
                    list->append(entry());
                }
            }
            std::vector<size_t> order(size_t(list->size()));
            std::iota(order.begin(), order.end(), 0U);
            if (round % 30 == 0) {
                std::ranges::shuffle(order, random);
            }
            std::swap(order[size_t(below(list->size()))], order[size_t(below(list->size()))]);
            list->reorder(order);
            list->removeAt(below(list->size()));
            list->append(entry());
            if (const DictionaryPointer changed = list->at(below(list->size())).dictionary()) {
                changed->insert(u"text"_s, QString::number(round));
            }
            nested->append(round);
            root->insert(u"other"_s, round);
            while (pieces.update(*root, QDeadlineTimer(0)) == PropertyList::XmlPieces::State::Unfinished) {
            }
            QCOMPARE(pieces.pieces().join(), PropertyList::writeXml(root));
        }
    }

    void pieceWithoutAChangeIsKept()
    {
        const auto list = Array::create();
        for (int i = 0; i < 1000; ++i) {
            list->append(Dictionary::create({{u"text"_s, QString(1000, u'x')}}));
        }
        const auto root = Dictionary::create({{u"list"_s, list}});
        PropertyList::XmlPieces pieces;
        QCOMPARE(pieces.update(*root), PropertyList::XmlPieces::State::Complete);
        const QByteArrayList before = pieces.pieces();
        list->at(500).dictionary()->insert(u"text"_s, u"y"_s);
        QCOMPARE(pieces.update(*root), PropertyList::XmlPieces::State::Complete);
        const auto isShared = [&pieces](const QByteArray& piece) {
            return std::ranges::any_of(
                pieces.pieces(), [&piece](const QByteArray& other) { return other.constData() == piece.constData(); });
        };
        // The one with the entry, and the first and the last, which hold what is around the list.
        QCOMPARE(std::ranges::count_if(before, isShared), before.size() - 3);

        list->at(500).dictionary()->insert(u"text"_s, QString(QChar(1)));
        QCOMPARE(pieces.update(*root), PropertyList::XmlPieces::State::Inexpressible);
    }
};

QTEST_APPLESS_MAIN(PropertyListXmlPiecesTest)
#include "PropertyListXmlPiecesTest.moc"
