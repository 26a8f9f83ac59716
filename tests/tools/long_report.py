"""A report of takes in a browser: headless Chromium, without a network."""

import base64
import os
import pathlib
import re
import subprocess

import pytest
from selenium import webdriver
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

ZANTO_SONG = pathlib.Path(os.environ["ZANTO_BUILD"], "tools/zanto-song")
SONG = "120 4\n" + "C\nD\nE\nC\n\nE\nF\nG2\n" * 3 + "\n"
TAKES = {"ben 10.wav": ["--ahead", "-0.2", "--gap", "0"], "ben 9.wav": [],
         "Anna & <Co>.wav": ["--ahead", "0.03", "--gap", "0"]}

# The contrast of each text to white.
CONTRASTS = """
const light = part => part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4;
return [...document.querySelectorAll("h1, h2, h3, p, li, a, td, th, button, span, text")].map(element => {
  const style = getComputedStyle(element);
  const color = element.tagName === "text" ? style.fill : style.color;
  const [red, green, blue] = color.match(/[\\d.]+/g).map(part => light(part / 255));
  return 1.05 / (0.2126 * red + 0.7152 * green + 0.0722 * blue + 0.05);
});
"""


@pytest.fixture(name="report", scope="module")
def fixture_report(tmp_path_factory):
    """The page of three takes, and what zanto-song said of each of them."""
    folder = tmp_path_factory.mktemp("report")
    (folder / "song.txt").write_text(SONG, encoding="utf-8")
    for name, style in TAKES.items():
        subprocess.run([ZANTO_SONG, "render", "song.txt", "-o", name, *style], cwd=folder, check=True)
    said = subprocess.run([ZANTO_SONG, "perform", "song.txt", *TAKES, "--report", "report.html", "--with-sound"],
                          cwd=folder, check=True, capture_output=True, text=True).stdout
    return folder / "report.html", said


@pytest.fixture(name="browser", scope="module")
def fixture_browser(report, tmp_path_factory):
    """The page in a browser that reaches nothing else."""
    options = Options()
    options.binary_location = "/usr/bin/chromium"
    for option in ("headless", "disable-gpu", "disable-quic", "no-first-run", "disable-background-networking",
                   "disable-component-update", "disable-sync", "host-resolver-rules=MAP * ~NOTFOUND",
                   "autoplay-policy=no-user-gesture-required", f"user-data-dir={tmp_path_factory.mktemp('profile')}"):
        options.add_argument(f"--{option}")
    if os.geteuid() == 0:
        options.add_argument("--no-sandbox")
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
    try:
        driver.set_window_size(1280, 900)
        driver.get(report[0].as_uri())
        yield driver
        assert driver.get_log("browser") == []
    finally:
        driver.quit()


def rows(browser):
    """The texts of the table's cells."""
    return [[cell.text for cell in row.find_elements(By.CSS_SELECTOR, "th, td")]
            for row in browser.find_elements(By.CSS_SELECTOR, "tbody tr")]


def head(browser, name):
    """The heading of a column."""
    return next(cell for cell in browser.find_elements(By.CSS_SELECTOR, "thead th") if cell.text.startswith(name))


def names(browser):
    return [row[0] for row in rows(browser)]


def test_the_table_says_what_the_command_said(browser, report):
    for name, score, hits, penalties, _ in rows(browser):
        assert f"{name}: {score} points, {hits} notes awarded, {penalties} penalties" in report[1]
    assert names(browser) == list(TAKES)


@pytest.mark.parametrize("column, best_first", [
    ("Name", ["Anna & <Co>.wav", "ben 9.wav", "ben 10.wav"]),
    ("Score", ["ben 9.wav", "Anna & <Co>.wav", "ben 10.wav"]),
    ("Hits", None), ("Penalties", None), ("Timing", None)])
def test_a_click_sorts_by_a_column_and_another_one_turns_the_order_round(browser, column, best_first):
    button = head(browser, column).find_element(By.TAG_NAME, "button")
    button.click()
    first = names(browser)
    direction = head(browser, column).get_attribute("aria-sort")
    assert best_first in (None, first)
    assert direction == ("descending" if column in ("Score", "Hits") else "ascending")
    values = [float(re.match(r"-?\d+", row[["Name", "Score", "Hits", "Penalties", "Timing"].index(column)]).group())
              for row in rows(browser)] if column != "Name" else []
    assert values == sorted(values, reverse=direction == "descending")
    button.click()
    assert head(browser, column).get_attribute("aria-sort") != direction
    assert names(browser)[0] == first[-1] or values[0] == values[-1]
    assert len(browser.find_elements(By.CSS_SELECTOR, "th[aria-sort=none]")) == 4


def test_the_keyboard_reaches_all_and_sorts(browser):
    browser.execute_script("document.activeElement.blur()")
    head(browser, "Score").find_element(By.TAG_NAME, "button").click()
    reached = set()
    for _ in range(40):
        browser.switch_to.active_element.send_keys(Keys.TAB)
        active = browser.switch_to.active_element
        reached.add((active.tag_name, active.text if active.tag_name != "div" else active.get_attribute("aria-label")))
        if active.text == "Name":
            active.send_keys(Keys.ENTER)
            assert head(browser, "Name").get_attribute("aria-sort") == "ascending"
            assert browser.execute_script("return getComputedStyle(document.activeElement).outlineStyle") == "solid"
    assert {("button", name) for name in ("Name", "Score", "Hits", "Penalties", "Timing")} <= reached
    assert {("a", name) for name in TAKES} | {("div", "Legend")} <= reached


@pytest.mark.parametrize("width", [1280, 360])
def test_pictures_are_shown_and_the_page_fits_its_window(browser, width):
    browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                            {"width": width, "height": 800, "deviceScaleFactor": 1, "mobile": False})
    pictures = browser.find_elements(By.CSS_SELECTOR, "svg[role=img]")
    assert len(pictures) == 3 * 2 + 1
    assert all(picture.size["width"] >= 600 and picture.size["height"] > 100 for picture in pictures)
    inside, window = browser.execute_script("return [document.documentElement.scrollWidth, innerWidth]")
    assert inside <= window == width


def test_colours_have_the_contrast_that_small_letters_need(browser):
    contrasts = browser.execute_script(CONTRASTS)
    assert len(contrasts) > 100
    assert min(contrasts) >= 4.5


def test_everything_that_can_be_used_has_a_name(browser):
    tree = browser.execute_cdp_cmd("Accessibility.getFullAXTree", {})["nodes"]
    named = [(node["role"]["value"], node.get("name", {}).get("value", "")) for node in tree if not node["ignored"]]
    wanted = {"button", "link", "image", "region", "columnheader", "rowheader", "heading", "Audio"}
    assert {role for role, _ in named} >= wanted
    assert [role for role, name in named if role in wanted and not name] == []
    identities = browser.execute_script("return [...document.querySelectorAll('[id]')].map(element => element.id)")
    assert len(identities) == len(set(identities)) == 3
    for link in browser.find_elements(By.CSS_SELECTOR, "a"):
        assert link.get_attribute("href").split("#")[1] in identities


def test_the_sound_plays(browser):
    browser.set_script_timeout(20)
    seconds, played = browser.execute_async_script("""
        const [sound, done] = [document.querySelector("audio"), arguments[0]];
        sound.addEventListener("timeupdate", () => sound.currentTime > 0.3 && done([sound.duration, sound.currentTime]));
        sound.play().catch(error => done([String(error), 0]));
    """)
    assert seconds == pytest.approx(17.0, abs=0.2) and played > 0.3
    browser.execute_script("document.querySelector('audio').pause()")


def test_it_prints(browser):
    paper = base64.b64decode(browser.execute_cdp_cmd("Page.printToPDF", {"preferCSSPageSize": True})["data"])
    assert paper.startswith(b"%PDF-")
    assert 2 <= len(re.findall(rb"/Type\s*/Page\b", paper)) <= 5
