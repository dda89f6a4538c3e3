// SPDX-License-Identifier: MIT
#include "views/message/MessageViewWin.h"

#include "bridge/RecordCopy.h"
#include "host/support/CProductVersion.h"
#include "protocol/LinkFrame.h"
#include "protocol/Records.h"
#include "views/message/MessageTables.h"
#include "views/message/MsgViewRightWin.h"

#include <QHBoxLayout>
#include <QTreeWidget>

#include <algorithm>
#include <iterator>

namespace {

constexpr int kTreeWidth = 200;

constexpr const char* kNmeaTypes[] = {"GGA", "RMC", "GLL", "VTG", "ZDA"};
constexpr const char* kBinaryTypes[] = {"Loc",    "Meas",    "PdrComm",  "PdrMeas", "PdrLs",
                                        "PpsSts", "FixMode", "NmeaMode", "Tsensor", "FtmCn0"};
constexpr const char* kReducedBinaryTypes[] = {"Loc", "Meas", "PpsSts", "FixMode", "FtmCn0"};

/// A node and, by the place among its siblings, where it goes.
struct SplitType {
    const char* name;
    int place;
};
constexpr SplitType kSplitTypes[] = {{"GSV", 2}, {"GSA", 3}};

template <std::size_t Count> QTreeWidgetItem* MakeNode(const char* name, const char* const (&children)[Count])
{
    auto* node = new QTreeWidgetItem({QString(name)});
    for (const char* child : children) {
        node->addChild(new QTreeWidgetItem({QString(child)}));
    }
    return node;
}

/// The part of a text behind its blank, or the text.
QString BehindBlank(const QString& text)
{
    return text.mid(text.indexOf(' ') + 1);
}

} // namespace

MessageViewWin::MessageViewWin(QWidget* parent) : ClosingWidget(parent)
{
    setWindowTitle(tr("消息数据"));
    // Made before the tree: in a window too narrow for both the tree covers it.
    m_right = new MsgViewRightWin(this);
    m_right->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_tree = new QTreeWidget(this);
    m_tree->setFixedWidth(kTreeWidth);
    m_tree->setColumnCount(1);
    m_tree->setHeaderHidden(true);
    FillTree();

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_tree);
    row->addWidget(m_right, 1);

    // The right side begins with the first node, so the tree does: it makes that current when it gets the focus.
    m_tree->setCurrentItem(m_tree->topLevelItem(0));
    connect(m_tree, &QTreeWidget::itemClicked, this, &MessageViewWin::SlotUpdateRightWin);
    connect(m_tree, &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem* item) { SlotUpdateRightWin(item, 0); });
}

void MessageViewWin::OnRecord(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, protocol::kMessageHeaderSize + sizeof(protocol::MsgMeas),
                            "MessageViewWin");
    if (record.IsDropped() || record.Size() < protocol::kMessageHeaderSize) {
        return;
    }
    const MessageShape* shape = FindMessageShape(record.At<std::uint32_t>(0));
    if (shape == nullptr) {
        return;
    }
    m_right->SetValues(*shape, record.Data() + protocol::kMessageHeaderSize,
                       record.Size() - protocol::kMessageHeaderSize);
}

void MessageViewWin::SlotUpdateRightWin(QTreeWidgetItem* item, int)
{
    if (item == nullptr) {
        return;
    }
    const QString type = BehindBlank(item->text(0));
    QString title = type;
    QTreeWidgetItem* parentItem = item->parent();
    for (QTreeWidgetItem* above = parentItem; above != nullptr; above = above->parent()) {
        title = above->text(0) + " > " + title;
    }

    if (item->childCount() > 0) {
        m_right->ShowNode(title, type);
    } else if (parentItem == nullptr || parentItem->parent() == nullptr) {
        m_right->ShowMessage(title, type, 0);
    } else {
        m_right->ShowMessage(title, BehindBlank(parentItem->text(0)), parentItem->indexOfChild(item));
    }
}

void MessageViewWin::FillTree()
{
    const char* constellations[protocol::kMessageBlocks] = {};
    std::transform(protocol::kBlockOrder.begin(), protocol::kBlockOrder.end(), std::begin(constellations),
                   [](protocol::Constellation each) { return protocol::RowOf(each).shortName; });
    QTreeWidgetItem* nmea = MakeNode("NMEA", kNmeaTypes);
    for (const SplitType& split : kSplitTypes) {
        nmea->insertChild(split.place, MakeNode(split.name, constellations));
    }
    m_tree->addTopLevelItem(nmea);
    m_tree->addTopLevelItem(CProductVersion::GetVersion() == protocol::kReducedProduct
                                ? MakeNode("Binary", kReducedBinaryTypes)
                                : MakeNode("Binary", kBinaryTypes));
    m_tree->expandToDepth(0);
}
