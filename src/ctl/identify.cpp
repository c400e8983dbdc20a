// kestrelctl identify: which boards are there, and which index files they need.
#include "ctl/connection.h"
#include "ctl/parameters.h"
#include "ctl/words.h"

namespace kestrel::ctl {

int identify(Context& context) {
    const Connection connection(context);
    bool isWell = connection.masterTrouble().empty();
    for (const Board which : {Board::Master, Board::HotDrink, Board::Sector}) {
        const BoardOnTheLine& board = connection.board(which);
        const std::string name = BoardName(which);
        if (!board.isThere) {
            context.out.result(name + ": " + say(Word::BoardIsNotThere), {{"board", name}, {"there", false}});
            continue;
        }
        const BoardIdentity& who = board.identity;
        Fields fields = {{"board", name},
                         {"there", true},
                         {"type", std::int64_t{who.boardType}},
                         {"software", std::int64_t{who.software}},
                         {"release", std::int64_t{who.release}},
                         {"kind", std::int64_t{who.kind}},
                         {"index_file", board.indexFile},
                         {"index_file_there", board.fileTrouble.empty()}};
        std::string text = name + ": " +
                           say(Word::Identity, {std::to_string(who.boardType), std::to_string(who.software),
                                                std::to_string(who.release), std::to_string(who.kind)});
        if (which == Board::Master) {
            text += ", " + say(Word::Revision, {std::to_string(BoardRevision())});
            fields.emplace_back("revision", std::int64_t{BoardRevision()});
        }
        isWell = isWell && board.fileTrouble.empty();
        text += ", " + (board.fileTrouble.empty() ? board.indexFile : say(Word::IndexFileMissing, {board.fileTrouble}));
        context.out.result(text, fields);
    }
    if (!connection.masterTrouble().empty()) context.out.remark(connection.masterTrouble());
    return isWell ? status::Well : status::Differs;
}

}  // namespace kestrel::ctl
