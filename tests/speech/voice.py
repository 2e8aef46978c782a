"""Is a screen reader with a voice that writes: a JSON line on standard output for each thing said, null where the
voice was stopped. Its settings are those of a user who has not changed any, and are kept nowhere."""
import json
import sys

from orca import orca, speechserver


class SpeechServer(speechserver.SpeechServer):
    @staticmethod
    def getSpeechServer(info=None):
        return SpeechServer()

    def tell(self, what):
        print(json.dumps(what), flush=True)

    def speak(self, text=None, acss=None, interrupt=True):
        self.tell(text or "")

    def speakCharacter(self, character, acss=None):
        self.tell(character)

    def sayAll(self, utteranceIterator, progressCallback):
        for context, _ in utteranceIterator:
            self.tell(context.utterance)

    def stop(self):
        self.tell(None)


if __name__ == "__main__":
    # The name of this file: a module that the reader loads.
    orca.getSettingsManager().activate(None, {"speechServerFactory": "voice", "speechServerInfo": None,
                                              "enableKeyEcho": False, "enableBraille": False, "enableSound": False})
    sys.exit(orca.main())
