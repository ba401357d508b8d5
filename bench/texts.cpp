#include "texts.h"

#include <random>
#include <string_view>
#include <vector>

namespace bench {
namespace {

// Words end at a bar or at a space, which belongs to the word; a bar stands where a language that
// has no spaces may be cut.
constexpr std::string_view english =
    "The harbour was quiet when the last ferry came in, and nobody noticed the old clock above the "
    "customs house, which had stopped at 4:17 some winters ago. \"It keeps better time than you "
    "do,\" the keeper used to tell his daughter; she counted 360 steps from the gate to the lamp, "
    "never one more. On market days farmers from the hills sold apples, walnuts and rough wool, "
    "argued about rain, and went home before dark. In March the river rose again: 12 families "
    "moved upstairs, the school closed for a week, and the Baker's boat carried bread through "
    "streets where children usually played. ";

constexpr std::string_view german =
    "Über den Dächern der Altstadt hing früh am Morgen noch Nebel, während die Bäckerin längst "
    "ihre Öfen geheizt und die ersten Brötchen verkauft hatte. „Heute wird's schön“, sagte der "
    "Straßenkehrer, stützte sich auf seinen Besen und zählte die Tauben auf dem Rathausdach: 23 "
    "waren es, eine weniger als gestern. Gegen Mittag füllte sich der Platz mit Händlern, die "
    "Äpfel, Käse, Honig und Gewürze anboten; Kinder liefen zwischen den Ständen umher und übten "
    "Zungenbrecher. Am Abend, als die Lichter über dem Fluss angingen, hörte man aus der Mühle "
    "leise Musik – ein Walzer, größer als das Haus, in dem er gespielt wurde. ";

constexpr std::string_view russian =
    "Поздней осенью, когда последние листья уже облетели, старый мастер открыл окно и услышал, как "
    "за рекой прошёл поезд. В доме пахло яблоками и свежей краской; на столе лежали чертежи, "
    "линейка и недописанное письмо. «Завтра приедет Анна», — подумал он и посмотрел на часы: было "
    "без четверти 7. Соседский мальчик принёс хлеб, молоко и новости из города, где Строили Новый "
    "Мост и спорили о его цвете. Вечером они сидели у печи, пили чай с вареньем, вспоминали давние "
    "путешествия и считали, сколько дней осталось до первого снега. ";

constexpr std::string_view japanese =
    "朝早く、|港の市場では|魚を運ぶ人々の声が|響いていた。|祖母は|古い自転車に乗って、|"
    "毎週土曜日の|7:30に|"
    "野菜と豆腐を|買いに行く。|「今日は風が強いから、|帽子を忘れないで」と|言われたのに、|"
    "私は|机の上に置いたまま|出かけてしまった。|駅前の喫茶店で|コーヒーを飲みながら、|"
    "新聞の小さな記事を|"
    "読んだ。|川の向こうに|新しい図書館が|建てられ、|2024年4月に|開館するという。|館内では|Wi-"
    "Fiが使え、|"
    "DVDや|古いLPレコード|約3500枚も|借りられる。|子供たちは|カメラを持って|橋の上に集まり、|"
    "ゆっくり進む船を|撮影していた。|JR線の駅から|バスで15分、|運賃は250円。|夕方になると|"
    "雨が降り始め、|"
    "町の灯りが|水面に揺れて、|まるで絵のように|美しかった。\n|";

constexpr std::string_view mixed =
    "Release 42 shipped on Tuesday 🚀 and the notes were read in Größenwahn and in good humour. "
    "Πρωί στο λιμάνι, ο καπετάνιος μετρούσε τα κύματα. Москва, 18 января: снег идёт третий день, "
    "поезда опаздывают. 会議は|午後三時に|始まります。|サーバーの|再起動を|お願いします。|"
    "오늘은 하늘이 맑고 바람이 시원합니다. הספר נמצא על השולחן. وصل القطار في الموعد. "
    "Café, naïve, Šumava, İstanbul, smørrebrød: five words, five keyboards 😀🎉. Error 0x80 at "
    "line 7; see the log (3.5 MB). Żółw idzie powoli, ale dojdzie 🐢. 发布说明|已经更新,|"
    "请查看|附件。|";

constexpr std::string_view prose[] = {english, german, russian, japanese, mixed};

std::vector<std::string_view> words_of(std::string_view text) {
    std::vector<std::string_view> words;
    while (!text.empty()) {
        std::size_t end = text.find_first_of(" |");
        bool is_space = text[end] == ' ';
        words.push_back(text.substr(0, end + is_space));
        text.remove_prefix(end + 1);
    }
    return words;
}

// std::shuffle may differ between libraries.
void shuffle(std::vector<std::string_view> &words, std::mt19937 &random) {
    for (std::size_t i = words.size() - 1; i > 0; --i)
        std::swap(words[i], words[random() % (i + 1)]);
}

void cut_at_character(std::string &text, std::size_t bytes) {
    while (bytes > 0 && (static_cast<unsigned char>(text[bytes]) & 0xC0) == 0x80) --bytes;
    text.resize(bytes);
}

} // namespace

std::string make_text(language what, std::size_t bytes) {
    constexpr unsigned seed = 20231;
    std::mt19937 random(seed);
    std::vector<std::string_view> words = words_of(prose[static_cast<int>(what)]);
    std::string text;
    while (text.size() <= bytes) {
        for (std::string_view word : words) text += word;
        shuffle(words, random);
    }
    cut_at_character(text, bytes);
    return text;
}

} // namespace bench
