#VERSION: 1.0
#AUTHORS: Quillo tests
# A search engine for qBittorrent's nova3 runner that needs no network: it prints fixed results,
# spaced apart so that a client sees them arrive while the search runs. The pattern "endless"
# keeps printing until the search is stopped; any other prints `count` results.

import time

from novaprinter import prettyPrinter


class quillotest(object):
    url = 'http://127.0.0.1'
    name = 'Quillo Test'
    supported_categories = {'all': '0', 'movies': '6', 'software': '7'}

    count = 6
    pause = 0.4

    def search(self, what, cat='all'):
        endless = what == 'endless'
        index = 0
        while endless or index < self.count:
            prettyPrinter({
                'link': 'magnet:?xt=urn:btih:%040x&dn=%s-%d' % (index + 1, what, index),
                'name': '%s %s %d' % (what, cat, index),
                'size': '%d MB' % (index * 7 % 5 + 1),
                'seeds': str(index * 3 % 4),
                'leech': str(index),
                'engine_url': self.url,
                'desc_link': 'http://127.0.0.1/%s/%d' % (what, index),
            })
            index += 1
            if endless and index > 600:
                break
            time.sleep(self.pause)
