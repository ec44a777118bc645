// The documents of the company-data services, in the shapes the SEC and the chart service
// publish, read into what the Stocks table keeps.

#include "halvard/fundamentals/company_answers.h"

#include <gtest/gtest.h>

#include "local_server.h"

namespace halvard::fundamentals {
namespace {

using test::GenuineAnswer;

TEST(EdgarAnswers, TheTickerListGivesCikNameAndExchangeWhateverTheColumnOrder) {
  const auto list = ReadEdgarTickers(GenuineAnswer("edgar/company_tickers_exchange.json"));
  ASSERT_TRUE(list);
  const EdgarCompany& apple = list->at(EdgarTicker("aapl"));
  EXPECT_EQ(apple.cik, "0000320193");
  EXPECT_EQ(apple.name, "Apple Inc.");
  EXPECT_EQ(apple.exchange, "Nasdaq");
  // A share class is written with "-" by the SEC and with "." in many watch lists.
  EXPECT_EQ(list->at(EdgarTicker("BRK.B")).cik, "0001067983");

  const auto moved = ReadEdgarTickers(
      R"({"fields":["ticker","exchange","cik","name"],"data":[["MSFT","Nasdaq","789019","MICROSOFT CORP"],)"
      R"(["BAD","Nasdaq",-5,"No CIK"],["LONG","NYSE",12345678901,"Eleven digits"]]})");
  ASSERT_TRUE(moved);
  EXPECT_EQ(moved->at("MSFT").cik, "0000789019");
  EXPECT_EQ(moved->count("BAD") + moved->count("LONG"), 0u);
  EXPECT_FALSE(ReadEdgarTickers("<html>Request Rate Threshold Exceeded</html>"));
  EXPECT_FALSE(
      ReadEdgarTickers(R"({"0":{"cik_str":320193,"ticker":"AAPL","title":"Apple Inc."}})"));
}

TEST(EdgarAnswers, TheSubmissionsGiveNameIndustryAndTheTickersExchange) {
  const auto apple =
      ReadEdgarSubmissions(GenuineAnswer("edgar/CIK0000320193-submissions.json"), "AAPL");
  ASSERT_TRUE(apple);
  EXPECT_EQ(apple->name, "Apple Inc.");
  EXPECT_EQ(apple->industry, "Electronic Computers");
  EXPECT_EQ(apple->exchange, "Nasdaq");
  EXPECT_FALSE(apple->eps);
  const auto other = ReadEdgarSubmissions(
      R"({"cik":"1067983","name":"BERKSHIRE HATHAWAY INC","sicDescription":"Fire, Marine & Casualty Insurance",)"
      R"("tickers":["BRK-B","BRK-A"],"exchanges":["NYSE","NYSE Arca"]})",
      "BRK-A");
  ASSERT_TRUE(other);
  EXPECT_EQ(other->exchange, "NYSE Arca");
  EXPECT_FALSE(ReadEdgarSubmissions(R"({"message":"Not found"})", "X"));
}

// A yearly report repeats earlier years and the fourth quarter; a quarterly report may give a
// trailing year. Only the latest fiscal year of a yearly report is the annual EPS.
TEST(EdgarAnswers, TheAnnualDilutedEpsIsTheLatestYearOfAYearlyReport) {
  const auto eps = ReadEdgarAnnualEps(GenuineAnswer("edgar/CIK0000320193-companyfacts.json"));
  ASSERT_TRUE(eps);
  ASSERT_TRUE(*eps);
  EXPECT_EQ(**eps, 6.13);

  const auto fact = [](const char* end, const char* val, const char* form, const char* filed) {
    std::string text = R"({"start":"2022-)";
    for (const char* part : {end, R"(","end":"2023-)", end, R"(","val":)", val, R"(,"form":")",
                             form, R"(","filed":")", filed, "\"}"}) {
      text += part;
    }
    return text;
  };
  const auto doc = [](std::initializer_list<std::string> facts) {
    std::string text = R"({"cik":1,"facts":{"us-gaap":{"EarningsPerShareDiluted":{"units":)"
                       R"({"USD/shares":[)";
    for (const std::string& f : facts) text.append(text.back() == '[' ? "" : ",").append(f);
    return text.append("]}}}}}");
  };
  // An amendment of the same year, filed later, corrects the figure.
  const auto amended = ReadEdgarAnnualEps(doc(
      {fact("06-30", "2.5", "10-K", "2023-08-01"), fact("06-30", "2.25", "10-K/A", "2023-09-01")}));
  EXPECT_EQ(**amended, 2.25);
  // No yearly figure at all: nothing is stored, not 0.
  const auto none = ReadEdgarAnnualEps(doc({fact("06-30", "2.5", "10-Q", "2023-08-01")}));
  ASSERT_TRUE(none);
  EXPECT_FALSE(*none);
  const auto noDiluted = ReadEdgarAnnualEps(R"({"cik":1,"facts":{"dei":{}}})");
  ASSERT_TRUE(noDiluted);
  EXPECT_FALSE(*noDiluted);
  EXPECT_FALSE(ReadEdgarAnnualEps("<html>Not Found</html>"));
}

TEST(QuoteSummaryAnswer, GivesEveryFigureOfTheRowWithBothEstimates) {
  const auto facts = ReadQuoteSummary(GenuineAnswer("quote-summary-aapl.json"));
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->name, "Apple Inc.");
  EXPECT_EQ(facts->exchange, "NasdaqGS");
  EXPECT_EQ(facts->industry, "Consumer Electronics");
  EXPECT_TRUE(facts->description.starts_with("Apple Inc. designs, manufactures"));
  EXPECT_EQ(facts->eps, 6.13);
  EXPECT_EQ(facts->yearEstimate, 6.62);
  EXPECT_EQ(facts->nextYearEstimate, 7.15);

  // The service leaves a figure it lacks as an empty object, and a module it lacks out.
  const auto sparse =
      ReadQuoteSummary(R"({"quoteSummary":{"result":[{"price":{"shortName":"Tiny Co"},)"
                       R"("defaultKeyStatistics":{"trailingEps":{}}}],"error":null}})");
  ASSERT_TRUE(sparse);
  EXPECT_EQ(sparse->name, "Tiny Co");
  EXPECT_FALSE(sparse->eps);
  EXPECT_FALSE(sparse->yearEstimate);
  EXPECT_EQ(sparse->industry, "");
  EXPECT_FALSE(ReadQuoteSummary(
      R"({"quoteSummary":{"result":null,"error":{"code":"Not Found","description":"Quote not found"}}})"));
}

}  // namespace
}  // namespace halvard::fundamentals
