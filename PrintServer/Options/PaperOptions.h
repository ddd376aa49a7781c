#pragma once

#include "Options/PaperSize.h"
#include "Options/TicketDraft.h"

#include <string>

namespace OvPrintServer {

/// The options that choose paper, by its size, its tray, its kind and its colour. What the printer does not
/// have of them is left.
class PaperOptions {
public:
    /// Both must outlive this object.
    PaperOptions(const QueueOffer& offer, TicketDraft& draft) : m_offer(offer), m_draft(draft) {}

    /// A size by its name.
    void TakeSize(const std::string& value);
    /// "a4,tray-1,stationery", in any order.
    void TakeMedia(const std::string& value);
    /// "{media-size={x-dimension=21000 y-dimension=29700} media-type=stationery}", in hundredths of a
    /// millimetre.
    void TakeCollection(const std::string& value);

private:
    bool ChooseSize(const std::string& name);
    bool ChooseSize(const PaperSize& size);
    bool ChooseCustom(const OfferedOption& custom, const PaperSize& size);
    bool ChooseDimensions(const std::string& collection);
    bool ChooseSource(const std::string& value);
    bool ChooseType(const std::string& value);
    bool ChooseColor(const std::string& value);

    const QueueOffer& m_offer;
    TicketDraft& m_draft;
};

} // namespace OvPrintServer
