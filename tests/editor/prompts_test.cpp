// Prompts: keywords, numbers, points, texts, refusals.
#include "support.h"

using namespace edtest;

namespace {

// Asks once inside a command with the given answers; the result and what was got are left in the members.
class Prompts : public EditorTest {
  protected:
    int result = 0;
    std::wstring transcript;

    void SetUp() override {
        application->newDocument();
        command<0>(L"ASK", 0, [this] { result = question_(); });
    }

    int ask(std::function<int()> question, std::deque<std::wstring> answers) {
        question_ = std::move(question);
        answers.push_front(L"ASK");
        result = 0;
        run(std::move(answers));
        transcript = terminal.text.substr(std::min<std::size_t>(terminal.text.size(), 13));
        return result;
    }
    // The keyword an answer means, or the result's number.
    std::wstring keyword(const wchar_t* list, const wchar_t* answer) {
        ACHAR text[40] = L"";
        const int got = ask(
            [&] {
                acedInitGet(0, list);
                return acedGetKword(L"\nOption: ", text);
            },
            {answer});
        return got == RTNORM ? text : std::to_wstring(got);
    }

  private:
    std::function<int()> question_;
};

TEST_F(Prompts, KeywordsHaveShortestForms) {
    struct Case {
        const wchar_t* list;
        const wchar_t* answer;
        const wchar_t* keyword;
    };
    const std::wstring refused = std::to_wstring(RTCAN);
    const Case cases[] = {
        {L"E C", L"e", L"E"},
        {L"Yes No", L"y", L"Yes"},
        {L"Yes No", L"NO", L"No"},
        {L"Yes No", L"yesno", nullptr},
        {L"LType LWeight", L"lt", L"LType"},
        {L"LType LWeight", L"l", nullptr},
        {L"LTYPE,LT Undo", L"ltyp", L"LTYPE"},
        {L"LTYPE,LT Undo", L"l", nullptr},
        {L"eXit Edit", L"x", L"eXit"},
        {L"eXit Edit", L"ex", L"eXit"},
        {L"eXit Edit", L"e", L"Edit"},
        {L"ON OFF", L"of", nullptr},
        {L"ON OFF", L"off", L"OFF"},
        {L"2Point", L"2p", L"2Point"},
        {L"Ja Nein _Yes No", L"j", L"Yes"},
        {L"Ja Nein _Yes No", L"_n", L"No"},
        {L"Ja Nein _Yes No", L"y", nullptr},
        {L"\u7ba1\u7ebf \u7acb\u7ba1", L"\u7acb\u7ba1", L"\u7acb\u7ba1"},
    };
    for (const Case& one : cases)
        EXPECT_EQ(one.keyword ? one.keyword : refused, keyword(one.list, one.answer))
            << qrs::platform::toUtf8(one.list) << " <- " << qrs::platform::toUtf8(one.answer);
    EXPECT_EQ(std::to_wstring(RTNONE), keyword(L"Yes No", L""));
}

TEST_F(Prompts, NumbersAreCheckedAndAskedAgain) {
    int number = -1;
    const auto getInt = [&](int flags, const wchar_t* keywords) {
        return [&number, flags, keywords] {
            acedInitGet(flags, keywords);
            return acedGetInt(L"\nColour [E/C] <3>: ", &number);
        };
    };
    EXPECT_EQ(RTNORM, ask(getInt(RSG_NONULL | RSG_NOZERO | RSG_NONEG, L"E C"),
                          {L"x", L"", L"1.5", L"99999", L"-1", L"0", L"7"}));
    EXPECT_EQ(7, number);
    const std::wstring prompt = L"Colour [E/C] <3>: ";
    const std::wstring wanted = L"\nRequires an integer value or option keyword.\n";
    EXPECT_EQ(prompt + L"x" + wanted + prompt + wanted + prompt + L"1.5" + wanted + prompt +
                  L"99999\nRequires an integer between -32768 and 32767.\n" + prompt +
                  L"-1\nValue must be positive and nonzero.\n" + prompt + L"0\nValue must be positive and nonzero.\n" +
                  prompt + L"7\n",
              transcript);

    EXPECT_EQ(RTKWORD, ask(getInt(0, L"E C"), {L"c"}));
    ACHAR input[8] = L"";
    EXPECT_EQ(RTNORM, acedGetInput(input, 8));
    EXPECT_STREQ(L"C", input);
    number = -1;
    EXPECT_EQ(RTNONE, ask(getInt(0, L"E C"), {L""}));
    EXPECT_EQ(RTCAN, ask(getInt(0, L"E C"), {kEsc}));
    EXPECT_EQ(L"Colour [E/C] <3>: *Cancel*\n", transcript);
    EXPECT_EQ(-1, number) << "left alone without a value";
    EXPECT_EQ(RTKWORD, ask(getInt(RSG_OTHER, L"E"), {L"anything"}));
    acedGetInput(input, 4);
    EXPECT_STREQ(L"any", input) << "cut to the buffer";

    double real = 0;
    EXPECT_EQ(RTNORM, ask([&] { return acedGetReal(nullptr, &real); }, {L"nan", L"1e999", L"-2.5e1"}));
    EXPECT_EQ(-25.0, real);
    EXPECT_EQ(RTCAN, ask([&] { return acedGetInt(L"\nAgain: ", &number); }, {L"c"}))
        << "flags and keywords hold for one prompt only";
    EXPECT_EQ(RTREJ, ask([&] { return acedGetInt(L"\nAgain: ", nullptr); }, {}));
}

TEST_F(Prompts, PointsAndDistances) {
    ads_point base = {10, 20, 30};
    ads_point point = {};
    EXPECT_EQ(RTNORM, ask([&] { return acedGetPoint(base, L"\nPoint: ", point); }, {L"1", L"1,2,3,4", L"@1,-2"}));
    EXPECT_EQ(11.0, point[0]);
    EXPECT_EQ(18.0, point[1]);
    EXPECT_EQ(30.0, point[2]);
    EXPECT_EQ(L"Point: 1\nInvalid point.\nPoint: 1,2,3,4\nInvalid point.\nPoint: @1,-2\n", transcript);
    double distance = 0;
    EXPECT_EQ(RTNORM, ask([&] { return acedGetDist(nullptr, L"\nDistance: ", &distance); }, {L"1,1", L"@3,4"}));
    EXPECT_EQ(5.0, distance);
    EXPECT_EQ(RTNORM, ask([&] { return acedGetDist(base, L"\nDistance: ", &distance); }, {L"10,20,42"}));
    EXPECT_EQ(12.0, distance);
    EXPECT_EQ(RTNORM, ask([&] { return acedGetDist(base, L"\nDistance: ", &distance); }, {L"2.25"}));
    EXPECT_EQ(2.25, distance);
}

TEST_F(Prompts, TextsFitTheirBuffers) {
    const std::wstring longText(300, L'x');
    std::vector<ACHAR> buffer(400, L'#');
    EXPECT_EQ(RTNORM, ask([&] { return acedGetString(1, L"\nText: ", buffer.data()); }, {longText}));
    EXPECT_EQ(std::wstring(132, L'x'), buffer.data());
    EXPECT_EQ(L'#', buffer[133]);
    EXPECT_EQ(RTNORM, ask([&] { return acedGetString(1, L"\nText: ", buffer.data(), 400); }, {longText}));
    EXPECT_EQ(longText, buffer.data());
    EXPECT_EQ(RTNORM, ask([&] { return acedGetString(1, L"\nText: ", buffer.data(), 400); }, {L""}));
    EXPECT_STREQ(L"", buffer.data());
    EXPECT_EQ(RTNORM, ask([&] { return acedGetString(1, L"\nText: ", buffer.data(), 400); }, {L"'tis a text"}));
    EXPECT_STREQ(L"'tis a text", buffer.data()) << "no command of that name, so a text";
}

TEST_F(Prompts, NoBlankLinesAppear) {
    ask(
        [] {
            acutPrintf(L"\n%s %d %ls", L"\u5c42", 5, L"x");
            acutPrintf(L" goes on\n");
            acutPrintf(L"\nnext\n\ntwo ends");
            acedPrompt(L"\nlast");
            return 0;
        },
        {});
    EXPECT_EQ(L"\u5c42 5 x goes on\nnext\n\ntwo ends\nlast\n", transcript + (transcript.back() == L'\n' ? L"" : L"\n"));
}

TEST_F(Prompts, SystemVariables) {
    resbuf value{};
    value.restype = RTSHORT;
    value.resval.rint = 0;
    EXPECT_EQ(4133, intVariable(L"osmode"));
    EXPECT_EQ(RTNORM, acedSetVar(L"OsMode", &value));
    EXPECT_EQ(0, intVariable(L"OSMODE"));
    value.resval.rint = 2;
    EXPECT_EQ(RTERROR, acedSetVar(L"CMDECHO", &value)) << "out of range";
    EXPECT_EQ(1, intVariable(L"CMDECHO"));
    EXPECT_EQ(RTERROR, acedSetVar(L"DBMOD", &value)) << "read-only";
    EXPECT_EQ(RTERROR, acedSetVar(L"NOSUCHVAR", &value));
    EXPECT_EQ(RTERROR, acedGetVar(L"NOSUCHVAR", &value));
    value.restype = RTSTR;
    EXPECT_EQ(RTERROR, acedSetVar(L"OSMODE", &value)) << "of another type";
    EXPECT_EQ(L"Drawing1.dxf", textVariable(L"DWGNAME"));
    EXPECT_EQ(0, intVariable(L"DWGTITLED"));
    EXPECT_EQ(1, intVariable(L"TILEMODE"));
    EXPECT_EQ(2, intVariable(L"CVPORT"));
    EXPECT_EQ(L"0", textVariable(L"CLAYER"));
}

}  // namespace
