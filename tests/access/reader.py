"""The screen reader Orca, which writes down what it would say. reader.py FILE SETTINGS

Writes each utterance as a JSON text on a line of FILE, and keeps its settings in the folder SETTINGS. Runs until it is
terminated. Speech Dispatcher is not needed: this replaces Orca's connection to it.
"""

import json
import sys

FILE, SETTINGS = sys.argv[1:3]
sys.argv = ["orca"]

from orca import orca, speechdispatcherfactory, speechserver  # noqa: E402

log = open(FILE, "w", buffering=1, encoding="utf-8")


def write(text):
    if text and text.strip():
        log.write(json.dumps(text.strip(), ensure_ascii=False) + "\n")


class Recorder(speechserver.SpeechServer):
    """Orca's voice. Orca also reports each key; the keys are known here."""

    voice = None

    @staticmethod
    def getFactoryName():
        return "Recorder"

    @staticmethod
    def getSpeechServers():
        return [Recorder.getSpeechServer()]

    @staticmethod
    def getSpeechServer(info=None):
        Recorder.voice = Recorder.voice or Recorder()
        return Recorder.voice

    @staticmethod
    def shutdownActiveServers():
        pass

    def getInfo(self):
        return ["Recorder", "default"]

    def getVoiceFamilies(self):
        return []

    def speak(self, text=None, acss=None, interrupt=True):
        write(text)

    def speakCharacter(self, character, acss=None):
        write(character)

    def speakKeyEvent(self, event, acss=None):
        pass

    def sayAll(self, utteranceIterator, progressCallback):
        for context, _ in utteranceIterator:
            write(context.utterance)


speechdispatcherfactory.SpeechServer = Recorder
orca.getSettingsManager().activate(SETTINGS, {"enableBraille": False, "enableBrailleMonitor": False,
                                              "enableSound": False})
sys.path.insert(0, SETTINGS)
sys.exit(orca.main())
